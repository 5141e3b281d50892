#pragma once

#include "Vex/Types.h"

#include <atomic>
#include <functional>
#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

/// Records the damage that readers find in a table.
///
/// A reader gives up the damaged table, keeps what it has read, and goes on, so the damage
/// must be recorded here. Reporting is const, since readers hold tables as constants and a
/// report does not change a table's contents.
class CorruptionLog {
public:
    using Handler = std::function<void(std::string_view message)>;

    /// Sets the function that is called with each report, on the reporting thread; there
    /// is none initially. Must be set before readers get the table.
    void corruptionHandlerIs(Handler handler);

    /// Counts one report and passes it on. Exceptions of the handler pass through.
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
