#pragma once

#include <chrono>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vxshow::system {

/// A moment of the clock, in milliseconds.
class UtcTime {
public:
    static UtcTime now();

    /// The moment that an RFC 3339 text in UTC means, such as "2026-11-23T02:10:11Z" or
    /// "2026-11-23T02:10:11.125Z"; digits after the third of a fraction are ignored. Nullopt if it
    /// is invalid. A leap second (":60") is invalid.
    static std::optional<UtcTime> tryFromString(std::string_view text);

    explicit UtcTime(std::chrono::sys_time<std::chrono::milliseconds> time) : time_(time) {}

    std::chrono::sys_time<std::chrono::milliseconds> time() const noexcept { return time_; }

    /// "2026-11-23T02:10:11.125Z". Years have four digits: of a clock that is set beyond 9999, the
    /// last four.
    std::string stringValue() const;

    auto operator<=>(UtcTime const &) const = default;

private:
    std::chrono::sys_time<std::chrono::milliseconds> time_;
};

} // namespace vxshow::system
