#pragma once

#include "Nolt/AddressText.h"
#include "Vex/KeyedHash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <array>
#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Nolt {

/// An Ethernet (EUI-48) address; the default is the all-zero address, which as a filter
/// means every address.
///
/// Stored as a number, so that it is ordered, hashed and moved as one: an array of six
/// bytes is written in pieces and read back as a whole, which stalls the processor each
/// time. Next to another number in an entry it takes no more room than an array would.
class EthAddr {
public:
    using Bytes = std::array<Vex::U8, 6>;

    /// Length of every text of `writeTo`.
    static constexpr std::size_t maxTextLength = 17;
    /// Length of every text of `writeDisplayTo`.
    static constexpr std::size_t maxDisplayLength = 14;

    /// No text of `writeTo` needs escapes in JSON.
    static constexpr bool textIsPlain = true;

    constexpr EthAddr() noexcept = default;

    /// The address of these bytes, in the order of transmission.
    constexpr explicit EthAddr(Bytes const & bytes) noexcept {
        for (auto const octet : bytes) {
            value_ = value_ << 8 | octet;
        }
    }

    /// The address whose `value()` is `value`; the upper 16 bits are ignored.
    static constexpr EthAddr ofValue(Vex::U64 value) noexcept {
        EthAddr address;
        address.value_ = value & 0xFFFFFFFFFFFF;
        return address;
    }

    /// Reads 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c or 001c.730a.0b0c, in either case, with
    /// every digit present and the same separator throughout. Raises `Vex::ParseError` for
    /// anything else.
    static EthAddr fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<EthAddr> tryFromString(std::string_view text) noexcept;

    /// The bytes in the order of transmission.
    constexpr Bytes bytes() const noexcept {
        return {byte(0), byte(1), byte(2), byte(3), byte(4), byte(5)};
    }

    /// The address as a 48-bit number; the byte sent first is the most significant.
    constexpr Vex::U64 value() const noexcept { return value_; }

    /// True for 00:00:00:00:00:00.
    constexpr bool isZero() const noexcept { return value() == 0; }

    constexpr bool operator!() const noexcept { return isZero(); }

    /// 00:1c:73:0a:0b:0c, in lower case.
    Vex::String stringValue() const;

    /// 001c.730a.0b0c, in lower case.
    Vex::String displayString() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text.
    char * writeTo(char * out) const noexcept { return writeGroups<1>(out, ':'); }

    /// Writes `displayString()` to `out`, which has room for `maxDisplayLength` bytes,
    /// without a terminating NUL. Returns the end of the text.
    char * writeDisplayTo(char * out) const noexcept { return writeGroups<2>(out, '.'); }

    constexpr bool operator==(EthAddr const & other) const noexcept = default;

    /// Ordered by the bytes in the order of transmission.
    constexpr std::strong_ordering operator<=>(EthAddr const & other) const noexcept = default;

private:
    static constexpr std::size_t size = 6;

    constexpr Vex::U8 byte(std::size_t index) const noexcept {
        return static_cast<Vex::U8>(value_ >> 8 * (size - 1 - index));
    }

    /// Writes the bytes in groups of `groupSize`, with the separator between them.
    template <std::size_t groupSize>
    char * writeGroups(char * out, char separator) const noexcept {
#pragma GCC unroll 6
        for (std::size_t index = 0; index < size; ++index) {
            if (index > 0 && index % groupSize == 0) {
                *out++ = separator;
            }
            out = detail::writeHexPair(out, byte(index));
        }
        return out;
    }

    Vex::U64 value_ = 0;
};

} // namespace Nolt

template <>
struct std::hash<Nolt::EthAddr> {
    std::size_t operator()(Nolt::EthAddr const & address) const noexcept {
        return Vex::keyedHash(address.value());
    }
};
