#pragma once

#include "Vex/KeyedHash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Bridging {

/// A VLAN number, or 0, the default, for none.
///
/// All 16 bits are kept although IEEE 802.1Q numbers VLANs with 12: this type shows what
/// was published, and a wrong number is best shown as it is.
class VlanIdOrNone {
public:
    static constexpr Vex::U16 none = 0;

    /// Length of the longest text, 65535.
    static constexpr std::size_t maxTextLength = 5;

    constexpr VlanIdOrNone() noexcept = default;

    constexpr explicit VlanIdOrNone(Vex::U16 value) noexcept : value_(value) {}

    /// Reads a decimal number from 0 to 65535; no sign, no blanks, no leading zeros.
    /// Raises `Vex::RangeError` for a greater number, `Vex::ParseError` for anything else.
    static VlanIdOrNone fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<VlanIdOrNone> tryFromString(std::string_view text) noexcept;

    constexpr bool isNone() const noexcept { return value_ == none; }

    /// The number; 0 for none.
    constexpr Vex::U16 value() const noexcept { return value_; }

    /// The decimal number; "0" for none.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text.
    char * writeTo(char * out) const noexcept;

    constexpr bool operator==(VlanIdOrNone const & other) const noexcept = default;
    constexpr std::strong_ordering operator<=>(VlanIdOrNone const & other) const noexcept = default;

private:
    Vex::U16 value_ = none;
};

} // namespace Bridging

template <>
struct std::hash<Bridging::VlanIdOrNone> {
    std::size_t operator()(Bridging::VlanIdOrNone vlan) const noexcept {
        return Vex::keyedHash(vlan.value());
    }
};
