#pragma once

#include "Nolt/AddressText.h"
#include "Vex/Hash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <array>
#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Nolt {

/// An Ethernet (EUI-48) address; the default is the all-zero one, which as a filter
/// stands for every address.
///
/// Six bytes with no padding: tables hold millions of these, so an entry must not pay
/// for alignment. Where a number serves better (to order, to hash), `value()` makes one.
class EthAddr {
public:
    using Bytes = std::array<Vex::U8, 6>;

    /// Length of every text of `writeTo`.
    static constexpr std::size_t maxTextLength = 17;
    /// Length of every text of `writeDisplayTo`.
    static constexpr std::size_t maxDisplayLength = 14;

    /// JSON takes every text of `writeTo` without escapes.
    static constexpr bool textIsPlain = true;

    constexpr EthAddr() noexcept = default;

    /// The address of these bytes, in the order of transmission.
    constexpr explicit EthAddr(Bytes const & bytes) noexcept : bytes_(bytes) {}

    /// The address whose `value()` is that, of which the upper 16 bits count for nothing.
    constexpr explicit EthAddr(Vex::U64 value) noexcept
        : bytes_{byteOf(value, 40), byteOf(value, 32), byteOf(value, 24),
                 byteOf(value, 16), byteOf(value, 8),  byteOf(value, 0)} {}

    /// Reads 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c or 001c.730a.0b0c, in either case, every
    /// digit there and one separator throughout. Raises `Vex::ParseError` for anything else.
    static EthAddr fromString(std::string_view text);

    /// As `fromString`, but nothing in place of the error.
    static std::optional<EthAddr> tryFromString(std::string_view text) noexcept;

    /// The bytes in the order of transmission.
    constexpr Bytes const & bytes() const noexcept { return bytes_; }

    /// The address as a 48-bit number, the byte sent first on top.
    [[gnu::always_inline]] constexpr Vex::U64 value() const noexcept {
        auto const & b = bytes_;
        auto const high = Vex::U32{b[0]} << 24 | Vex::U32{b[1]} << 16 | Vex::U32{b[2]} << 8 | b[3];
        return Vex::U64{high} << 16 | Vex::U64{b[4]} << 8 | b[5];
    }

    /// True for 00:00:00:00:00:00.
    constexpr bool isZero() const noexcept { return value() == 0; }

    constexpr bool operator!() const noexcept { return isZero(); }

    /// 00:1c:73:0a:0b:0c, in lower case.
    Vex::String stringValue() const;

    /// 001c.730a.0b0c, in lower case.
    Vex::String displayString() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a closing zero. Returns the end of the text.
    char * writeTo(char * out) const noexcept { return writeGroups<1>(out, ':'); }

    /// Writes `displayString()` to `out`, which has room for `maxDisplayLength` bytes,
    /// without a closing zero. Returns the end of the text.
    char * writeDisplayTo(char * out) const noexcept { return writeGroups<2>(out, '.'); }

    [[gnu::always_inline]] constexpr bool operator==(EthAddr const & other) const noexcept {
        return value() == other.value();
    }

    /// Ordered by the bytes, the first one first.
    [[gnu::always_inline]] constexpr std::strong_ordering
    operator<=>(EthAddr const & other) const noexcept {
        return value() <=> other.value();
    }

private:
    static constexpr Vex::U8 byteOf(Vex::U64 value, unsigned shift) noexcept {
        return static_cast<Vex::U8>(value >> shift);
    }

    /// Writes the bytes in groups of so many, with the separator between them.
    template <std::size_t groupSize>
    char * writeGroups(char * out, char separator) const noexcept {
#pragma GCC unroll 6
        for (std::size_t index = 0; index < bytes_.size(); ++index) {
            if (index > 0 && index % groupSize == 0) {
                *out++ = separator;
            }
            out = detail::writeHexPair(out, bytes_[index]);
        }
        return out;
    }

    Bytes bytes_{};
};

} // namespace Nolt

template <>
struct std::hash<Nolt::EthAddr> {
    std::size_t operator()(Nolt::EthAddr const & address) const noexcept {
        return Vex::hashMix(address.value());
    }
};
