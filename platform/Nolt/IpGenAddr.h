#pragma once

#include "Nolt/IpAddr.h"

#include <array>

namespace [[gnu::visibility("default")]] Nolt {

/// The family of an address of either version; families sort in this order.
enum class Family : Vex::U8 { none, ipv4, ipv6 };

/// An IPv4 or IPv6 address, or none at all, which as a filter means every address.
///
/// Both versions are stored as one 128-bit number in two halves, with an IPv4 address in
/// the lowest bits, so that comparing two addresses compares three numbers. An
/// IPv4-mapped IPv6 address stays an IPv6 address and differs from the IPv4 address it
/// contains.
class IpGenAddr {
public:
    using Ipv6Bytes = std::array<Vex::U8, 16>;

    /// Length of the longest text: eight IPv6 groups of four digits.
    static constexpr std::size_t maxTextLength = 39;

    /// No text of `writeTo` needs escapes in JSON.
    static constexpr bool textIsPlain = true;

    /// The empty address, of no family; its text is "".
    constexpr IpGenAddr() noexcept = default;

    /// Widens an IPv4 address. Implicit, since every IPv4 address is also an address of this
    /// type.
    constexpr IpGenAddr(IpAddr address) noexcept : low_(address.value()), family_(Family::ipv4) {}

    /// The IPv6 address of these bytes, in the order of transmission.
    constexpr explicit IpGenAddr(Ipv6Bytes const & bytes) noexcept : family_(Family::ipv6) {
        for (std::size_t index = 0; index < 8; ++index) {
            high_ = high_ << 8 | bytes[index];
            low_ = low_ << 8 | bytes[index + 8];
        }
    }

    /// The IPv6 address whose first 64 bits are `high` and whose last 64 bits are `low`.
    static constexpr IpGenAddr ipv6(Vex::U64 high, Vex::U64 low) noexcept {
        return IpGenAddr(high, low, Family::ipv6);
    }

    /// Reads a dotted quad as `IpAddr` does; IPv6 in any form of RFC 4291 section 2.2,
    /// without a zone; "" as the empty address, so test `isNone()` where an address is
    /// required. Raises `Vex::ParseError` for anything else.
    static IpGenAddr fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<IpGenAddr> tryFromString(std::string_view text) noexcept;

    constexpr Family family() const noexcept { return family_; }

    /// True for the empty address.
    constexpr bool isNone() const noexcept { return family_ == Family::none; }

    /// The number of bits of an address of this family: 0, 32 or 128.
    constexpr unsigned bitLength() const noexcept {
        return family_ == Family::ipv6 ? 128 : family_ == Family::ipv4 ? 32 : 0;
    }

    /// The IPv4 address; 0.0.0.0 for any other family.
    constexpr IpAddr ipv4() const noexcept {
        return IpAddr(family_ == Family::ipv4 ? static_cast<Vex::U32>(low_) : 0);
    }

    /// The first 64 bits of an IPv6 address, or 0 for the other families.
    constexpr Vex::U64 high() const noexcept { return high_; }

    /// The last 64 bits of an IPv6 address, the whole IPv4 address, or 0 for no family.
    constexpr Vex::U64 low() const noexcept { return low_; }

    /// The first 64 bits and the family as one word for hashing. Only addresses of different
    /// families can share it, together with `low()`: at most one of each.
    constexpr Vex::U64 highAndFamily() const noexcept {
        return high_ ^ static_cast<Vex::U64>(family_) << 32;
    }

    /// This address with all but the first `length` bits cleared; with a `length` of
    /// `bitLength()` or more, the address itself.
    constexpr IpGenAddr masked(unsigned length) const noexcept {
        if (family_ == Family::ipv6) {
            return ipv6(high_ & topBits(length), low_ & topBits(length < 64 ? 0 : length - 64));
        }
        return IpGenAddr(0, low_ & topBits(length < 32 ? 32 + length : 64), family_);
    }

    /// A dotted quad; IPv6 as RFC 5952 writes it; "" for the empty address.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text; the rest of that room can be
    /// overwritten.
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
        return Vex::keyedHash(address.low(), address.highAndFamily());
    }
};
