#pragma once

#include "Nolt/IpAddr.h"

#include <array>

namespace [[gnu::visibility("default")]] Nolt {

/// What kind of address an address of either version holds, in the order in which such
/// addresses sort.
enum class Family : Vex::U8 { none, ipv4, ipv6 };

/// An IPv4 or IPv6 address, or none at all, which as a filter stands for every address.
///
/// Both versions are held as one 128-bit number in two halves, an IPv4 address in the
/// lowest bits, so that comparing two addresses is comparing three numbers. An
/// IPv4-mapped IPv6 address stays one: it differs from the IPv4 address in it.
class IpGenAddr {
public:
    using Ipv6Bytes = std::array<Vex::U8, 16>;

    /// Length of the longest text, eight IPv6 groups of four digits.
    static constexpr std::size_t maxTextLength = 39;

    /// JSON takes every text of `writeTo` without escapes.
    static constexpr bool textIsPlain = true;

    /// The empty address, of no family; its text is "".
    constexpr IpGenAddr() noexcept = default;

    /// Widens an IPv4 address. Implicit, since every one of them is an address of this type.
    constexpr IpGenAddr(IpAddr address) noexcept : low_(address.value()), family_(Family::ipv4) {}

    /// The IPv6 address of these bytes, in the order of transmission.
    constexpr explicit IpGenAddr(Ipv6Bytes const & bytes) noexcept : family_(Family::ipv6) {
        for (std::size_t index = 0; index < 8; ++index) {
            high_ = high_ << 8 | bytes[index];
            low_ = low_ << 8 | bytes[index + 8];
        }
    }

    /// The IPv6 address whose first 64 bits are `high`, the others `low`.
    static constexpr IpGenAddr ipv6(Vex::U64 high, Vex::U64 low) noexcept {
        return IpGenAddr(high, low, Family::ipv6);
    }

    /// Reads a dotted quad as `IpAddr` does; IPv6 in any form of RFC 4291 section 2.2,
    /// without a zone; "" as the empty address, so where an address must be given, test
    /// `isNone()`. Raises `Vex::ParseError` for anything else.
    static IpGenAddr fromString(std::string_view text);

    /// As `fromString`, but nothing in place of the error.
    static std::optional<IpGenAddr> tryFromString(std::string_view text) noexcept;

    constexpr Family family() const noexcept { return family_; }

    /// True for the empty address.
    constexpr bool isNone() const noexcept { return family_ == Family::none; }

    /// The number of bits of an address of this family: 0, 32 or 128.
    constexpr unsigned bitLength() const noexcept {
        return family_ == Family::ipv6 ? 128 : family_ == Family::ipv4 ? 32 : 0;
    }

    /// The IPv4 address; 0.0.0.0 when the family is another one.
    constexpr IpAddr ipv4() const noexcept {
        return IpAddr(family_ == Family::ipv4 ? static_cast<Vex::U32>(low_) : 0);
    }

    /// The first 64 bits of an IPv6 address, 0 for the other families.
    constexpr Vex::U64 high() const noexcept { return high_; }

    /// The last 64 bits of an IPv6 address, the whole of an IPv4 address, 0 for none.
    constexpr Vex::U64 low() const noexcept { return low_; }

    /// This address with all but the first `length` bits cleared; with `bitLength()` or
    /// more, the address itself.
    constexpr IpGenAddr masked(unsigned length) const noexcept {
        if (family_ == Family::ipv6) {
            return ipv6(high_ & topBits(length), low_ & topBits(length < 64 ? 0 : length - 64));
        }
        return IpGenAddr(0, low_ & topBits(length < 32 ? 32 + length : 64), family_);
    }

    /// A dotted quad; IPv6 as RFC 5952 writes it; "" for the empty address.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a closing zero. Returns the end of the text; what stands behind it, up to the end
    /// of that room, may have changed.
    char * writeTo(char * out) const noexcept;

    constexpr bool operator==(IpGenAddr const & other) const noexcept = default;

    /// Ordered by family (none, IPv4, IPv6), then by the bytes.
    constexpr std::strong_ordering operator<=>(IpGenAddr const & other) const noexcept {
        if (auto const order = family_ <=> other.family_; order != 0) {
            return order;
        }
        if (auto const order = high_ <=> other.high_; order != 0) {
            return order;
        }
        return low_ <=> other.low_;
    }

private:
    constexpr IpGenAddr(Vex::U64 high, Vex::U64 low, Family family) noexcept
        : high_(high), low_(low), family_(family) {}

    static constexpr Vex::U64 topBits(unsigned count) noexcept {
        return count == 0 ? 0 : count >= 64 ? ~Vex::U64{0} : ~Vex::U64{0} << (64 - count);
    }

    Vex::U64 high_ = 0;
    Vex::U64 low_ = 0;
    Family family_ = Family::none;
};

} // namespace Nolt

template <>
struct std::hash<Nolt::IpGenAddr> {
    std::size_t operator()(Nolt::IpGenAddr const & address) const noexcept {
        auto const family = static_cast<Vex::U64>(address.family());
        return Vex::hashMix(address.low() ^ Vex::hashMix(address.high() ^ family << 32));
    }
};
