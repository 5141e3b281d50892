#pragma once

#include "Vex/KeyedHash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Vxlan {

/// A VXLAN network identifier: 24 bits (RFC 7348 section 5). The default is 0.
///
/// Operators write it in two ways, as a decimal number or as its three bytes with dots.
/// Both are read, and the caller chooses which is written.
class Vni {
public:
    static constexpr Vex::U32 min = 0;
    static constexpr Vex::U32 max = 0xFFFFFF;

    /// Length of the longest text, 255.255.255.
    static constexpr std::size_t maxTextLength = 11;

    constexpr Vni() noexcept = default;

    /// Raises `Vex::RangeError` if `value` is above `max`.
    constexpr explicit Vni(Vex::U32 value) : value_(value) {
        if (value > max) {
            throwOutOfRange();
        }
    }

    /// Reads a decimal number, or three decimal numbers from 0 to 255 with dots between
    /// them; no sign, no blanks, no leading zeros. Raises `Vex::RangeError` for a decimal
    /// number above `max`, `Vex::ParseError` for anything else.
    static Vni fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<Vni> tryFromString(std::string_view text) noexcept;

    constexpr Vex::U32 value() const noexcept { return value_; }

    /// The decimal number, or, if `dotted`, the three bytes: 4098 is 0.16.2.
    Vex::String stringValue(bool dotted = false) const;

    /// Writes `stringValue(dotted)` to `out`, which has room for `maxTextLength` bytes,
    /// without a terminating NUL. Returns the end of the text.
    char * writeTo(char * out, bool dotted = false) const noexcept;

    constexpr bool operator==(Vni const & other) const noexcept = default;
    constexpr std::strong_ordering operator<=>(Vni const & other) const noexcept = default;

private:
    [[noreturn]] static void throwOutOfRange();

    Vex::U32 value_ = 0;
};

} // namespace Vxlan

template <>
struct std::hash<Vxlan::Vni> {
    std::size_t operator()(Vxlan::Vni vni) const noexcept { return Vex::keyedHash(vni.value()); }
};
