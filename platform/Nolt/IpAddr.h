#pragma once

#include "Nolt/AddressText.h"
#include "Vex/KeyedHash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Nolt {

/// An IPv4 address, stored as a number in the host's byte order, so that addresses are
/// ordered as numbers. The default is 0.0.0.0.
class IpAddr {
public:
    /// Length of the longest text, 255.255.255.255.
    static constexpr std::size_t maxTextLength = 15;

    /// No text of `writeTo` needs escapes in JSON.
    static constexpr bool textIsPlain = true;

    constexpr IpAddr() noexcept = default;

    /// The address whose first octet is the top byte of `value`.
    constexpr explicit IpAddr(Vex::U32 value) noexcept : value_(value) {}

    /// Reads a dotted quad: exactly four decimal numbers from 0 to 255, without leading
    /// zeros, which other readers take for octal. Raises `Vex::ParseError` for anything else.
    static IpAddr fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<IpAddr> tryFromString(std::string_view text) noexcept;

    /// Reads the dotted quad at the start of a longer text, up to its last digit, and returns
    /// where it ends; null if there is none. The length of the text is not checked, so a byte
    /// that is not a digit must follow, as the closing quote does in JSON.
    static char const * readFrom(char const * text, IpAddr & into) noexcept;

    /// The address as a number; the first octet is the most significant.
    constexpr Vex::U32 value() const noexcept { return value_; }

    /// True for 0.0.0.0.
    constexpr bool isZero() const noexcept { return value_ == 0; }

    /// The dotted quad.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text; the rest of that room can be
    /// overwritten.
    char * writeTo(char * out) const noexcept {
        out = detail::writeOctetAndDot(out, static_cast<Vex::U8>(value_ >> 24));
        out = detail::writeOctetAndDot(out, static_cast<Vex::U8>(value_ >> 16));
        out = detail::writeOctetAndDot(out, static_cast<Vex::U8>(value_ >> 8));
        return detail::writeOctet(out, static_cast<Vex::U8>(value_));
    }

    constexpr bool operator==(IpAddr const & other) const noexcept = default;
    constexpr std::strong_ordering operator<=>(IpAddr const & other) const noexcept = default;

private:
    Vex::U32 value_ = 0;
};

} // namespace Nolt

template <>
struct std::hash<Nolt::IpAddr> {
    std::size_t operator()(Nolt::IpAddr address) const noexcept {
        return Vex::keyedHash(address.value());
    }
};
