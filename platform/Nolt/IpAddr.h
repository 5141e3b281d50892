#pragma once

#include "Nolt/AddressText.h"
#include "Vex/Hash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Nolt {

/// An IPv4 address, held as a number in the host's byte order, so that the order of
/// addresses is the order of numbers. The default is 0.0.0.0.
class IpAddr {
public:
    /// Length of the longest text, 255.255.255.255.
    static constexpr std::size_t maxTextLength = 15;

    /// JSON takes every text of `writeTo` without escapes.
    static constexpr bool textIsPlain = true;

    constexpr IpAddr() noexcept = default;

    /// The address whose first octet is the top byte of `value`.
    constexpr explicit IpAddr(Vex::U32 value) noexcept : value_(value) {}

    /// Reads a dotted quad: exactly four decimal numbers from 0 to 255 without leading
    /// zeros, which other readers take for octal. Raises `Vex::ParseError` for anything else.
    static IpAddr fromString(std::string_view text);

    /// As `fromString`, but nothing in place of the error.
    static std::optional<IpAddr> tryFromString(std::string_view text) noexcept;

    /// Reads the dotted quad at the start of a longer text, as far as its digits go, and
    /// returns where it ends; null when there is none. Some byte that is no digit must follow
    /// in the text, as the quote does in JSON: no length is looked at.
    static char const * readFrom(char const * text, IpAddr & into) noexcept;

    /// The address as a number, the first octet on top.
    constexpr Vex::U32 value() const noexcept { return value_; }

    /// True for 0.0.0.0.
    constexpr bool isZero() const noexcept { return value_ == 0; }

    /// The dotted quad.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a closing zero. Returns the end of the text; what stands behind it, up to the end
    /// of that room, may have changed.
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
        return Vex::hashMix(address.value());
    }
};
