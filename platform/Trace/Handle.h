#pragma once

#include "Trace/RecordStream.h"

#include <atomic>
#include <string>
#include <string_view>

/// The trace facility: a program's reports about its own work, off by default.
///
/// Each part of the program has a handle, records have levels, and each level of each
/// handle can be on or off:
///
///     if (auto record = handle.at(8)) {
///         record << "switchId " << name;
///     }
///
/// With the level off this costs a load and a test, and nothing in the braces is
/// evaluated, so every function can have traces.
namespace [[gnu::visibility("default")]] Trace {

class [[gnu::visibility("hidden")]] Registry;

inline constexpr unsigned maxLevel = 9;

/// A named source of trace records with the levels 0 (most important) to 9. It is
/// registered from its construction to its destruction, so make it a static object.
/// Several handles can have the same name.
class Handle {
public:
    /// Starts with the levels set by the last enableAllUpTo() or disableAll(), or with
    /// all levels off.
    explicit Handle(std::string name);
    ~Handle();

    Handle(Handle const &) = delete;
    Handle & operator=(Handle const &) = delete;

    std::string const & name() const noexcept { return name_; }

    /// Whether records of this level are delivered; always false for a level above 9.
    bool enabled(unsigned level) const noexcept {
        return level <= maxLevel && ((levels_.load(std::memory_order_relaxed) >> level) & 1U) != 0;
    }

    /// A record to write to, which converts to false if its level is off. It names the
    /// place of this call and is delivered when it is destroyed.
    RecordStream at(unsigned level, char const * file = __builtin_FILE(),
                    int line = __builtin_LINE(),
                    char const * function = __builtin_FUNCTION()) const {
        return enabled(level) ? RecordStream(name_, level, file, line, function) : RecordStream();
    }

    /// Turns the levels 0 to `level` on and those above it off.
    void enableUpTo(unsigned level) noexcept;

    /// Turns one level on or off and leaves the others unchanged. No effect above 9.
    void enable(unsigned level, bool on) noexcept;

    /// Turns all levels off.
    void disable() noexcept;

private:
    friend class Registry;

    std::string name_;
    std::atomic<unsigned> levels_{0}; ///< bit n: level n is on
};

/// Turns the levels 0 to `level` on and those above it off, for every handle of the
/// process and for those made later.
void enableAllUpTo(unsigned level);

/// The same for the existing handles with this name; false if there are none.
bool enableUpTo(std::string_view handleName, unsigned level);

/// Turns all levels off, for every handle and for those made later.
void disableAll();

} // namespace Trace
