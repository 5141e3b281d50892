#pragma once

#include "Trace/Handle.h"
#include "Trace/Sink.h"

#include <string>

/// Collects all trace records during its lifetime, at every level that the commands use.
class Traced {
public:
    Traced() {
        Trace::enableAllUpTo(8);
        Trace::setSink([this](Trace::Record const & record) {
            text += std::to_string(record.level) + " " + std::string(record.text) + "\n";
        });
    }

    ~Traced() {
        Trace::setSink({});
        Trace::disableAll();
    }

    Traced(Traced const &) = delete;
    Traced & operator=(Traced const &) = delete;

    std::string text;
};
