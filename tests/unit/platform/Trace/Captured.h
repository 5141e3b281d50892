#pragma once

#include "Trace/Handle.h"
#include "Trace/Sink.h"

#include <string>
#include <vector>

namespace Trace::test {

/// Levels are process-wide: a test starts and ends with all of them off.
struct LevelsOff {
    LevelsOff() { disableAll(); }

    LevelsOff(LevelsOff const &) = delete;
    LevelsOff & operator=(LevelsOff const &) = delete;

    ~LevelsOff() { disableAll(); }
};

/// A copy of a record that outlives the delivery.
struct Delivered {
    std::string handle;
    unsigned level;
    std::string file;
    int line;
    std::string function;
    std::string text;
};

/// Captures the records of a test while it lives.
class Captured {
public:
    Captured() {
        setSink([this](Record const & record) {
            records_.push_back({std::string(record.handle), record.level, record.file, record.line,
                                record.function, std::string(record.text)});
        });
    }

    Captured(Captured const &) = delete;
    Captured & operator=(Captured const &) = delete;

    ~Captured() { setSink(nullptr); }

    std::vector<Delivered> const & records() const { return records_; }

private:
    std::vector<Delivered> records_;
};

} // namespace Trace::test
