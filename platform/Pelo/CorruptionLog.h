#pragma once

#include "Vex/Types.h"

#include <atomic>
#include <functional>
#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

/// What a table does about damage that its readers found in it.
///
/// A reader gives up that table, keeps what it had, and goes on; so this is where the fact
/// stays on record. Readers have tables as constants, and reporting changes nothing of
/// what the table holds: hence the const.
class CorruptionLog {
public:
    using Handler = std::function<void(std::string_view message)>;

    /// Sets what is called with each report, on the reporting thread; none at start. To be
    /// set before readers get the table.
    void corruptionHandlerIs(Handler handler);

    /// Counts one report and passes it on. What the handler raises passes through.
    void handleCorruption(std::string_view message) const;

    /// The number of reports so far.
    Vex::U64 corruptions() const noexcept { return corruptions_.load(std::memory_order_relaxed); }

protected:
    CorruptionLog() = default;
    ~CorruptionLog() = default;

private:
    Handler handler_;
    mutable std::atomic<Vex::U64> corruptions_{0};
};

} // namespace Pelo
