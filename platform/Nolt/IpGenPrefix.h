#pragma once

#include "Nolt/IpGenAddrWithMask.h"

namespace [[gnu::visibility("default")]] Nolt {

/// An IPv4 or IPv6 network: an address whose bits beyond the prefix length are all zero,
/// so that every network has one spelling and equal networks are equal values. The
/// default has no family and as a filter stands for every network.
///
/// An address with host bits is refused, not rounded: 10.1.2.3/24 typed as a filter may
/// have been meant as 10.1.2.0/24 or as 10.1.2.3/32, and only the writer knows which.
class IpGenPrefix {
public:
    /// Length of the longest text, an IPv6 address with "/128".
    static constexpr std::size_t maxTextLength = IpGenAddrWithMask::maxTextLength;

    /// JSON takes every text of `writeTo` without escapes.
    static constexpr bool textIsPlain = true;

    /// The prefix of no family, of length 0; its text is "".
    constexpr IpGenPrefix() noexcept = default;

    /// Raises `Vex::RangeError` when the family has less than `length` bits, or when
    /// `address` has bits set beyond them; the message then names `covering(...)`.
    constexpr IpGenPrefix(IpGenAddr address, unsigned length) : value_(address, length) {
        if (address.masked(length) != address) {
            throwHostBits(value_);
        }
    }

    /// The network of that length in which `address` lies. Raises `Vex::RangeError` when
    /// the family has less than `length` bits.
    static constexpr IpGenPrefix covering(IpGenAddr address, unsigned length) {
        return IpGenPrefix(address.masked(length), length);
    }

    /// Reads ADDRESS/LENGTH, the length a decimal number without leading zeros, or "" as
    /// the prefix of no family. Raises `Vex::ParseError` for anything else; when only the
    /// host bits are wrong, the message names the prefix that was likely meant.
    static IpGenPrefix fromString(std::string_view text);

    /// As `fromString`, but nothing in place of the error.
    static std::optional<IpGenPrefix> tryFromString(std::string_view text) noexcept;

    /// The address of the network.
    constexpr IpGenAddr const & address() const noexcept { return value_.address(); }

    /// The prefix length in bits.
    constexpr unsigned length() const noexcept { return value_.length(); }

    constexpr Family family() const noexcept { return value_.family(); }

    /// True for the prefix of no family.
    constexpr bool isNone() const noexcept { return value_.isNone(); }

    /// True when the two share an address, which for prefixes of one family is when one of
    /// them contains the other. Prefixes of different families, or of none, share nothing.
    constexpr bool overlaps(IpGenPrefix const & other) const noexcept {
        unsigned const shared = length() < other.length() ? length() : other.length();
        return !isNone() && address().masked(shared) == other.address().masked(shared);
    }

    /// ADDRESS/LENGTH, or "" for the prefix of no family.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a closing zero. Returns the end of the text; what stands behind it, up to the end
    /// of that room, may have changed.
    char * writeTo(char * out) const noexcept;

    constexpr bool operator==(IpGenPrefix const & other) const noexcept = default;

    /// Ordered by address, then by length, the short one first.
    constexpr std::strong_ordering operator<=>(IpGenPrefix const & other) const noexcept = default;

private:
    [[noreturn]] static void throwHostBits(IpGenAddrWithMask const & value);

    IpGenAddrWithMask value_;
};

} // namespace Nolt

template <>
struct std::hash<Nolt::IpGenPrefix> {
    std::size_t operator()(Nolt::IpGenPrefix const & prefix) const noexcept {
        return Vex::hashMix(std::hash<Nolt::IpGenAddr>()(prefix.address()) + prefix.length());
    }
};
