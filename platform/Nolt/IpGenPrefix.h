#pragma once

#include "Nolt/IpGenAddrWithMask.h"

namespace [[gnu::visibility("default")]] Nolt {

/// An IPv4 or IPv6 network: an address whose bits beyond the prefix length are all zero,
/// so that every network has one spelling and equal networks are equal values. The
/// default has no family and as a filter means every network.
///
/// An address with host bits is refused, not rounded: 10.1.2.3/24 typed as a filter can
/// mean 10.1.2.0/24 or 10.1.2.3/32, and only the person who typed it knows which.
class IpGenPrefix {
public:
    /// Length of the longest text, an IPv6 address with "/128".
    static constexpr std::size_t maxTextLength = IpGenAddrWithMask::maxTextLength;

    /// No text of `writeTo` needs escapes in JSON.
    static constexpr bool textIsPlain = true;

    /// The prefix of no family, of length 0; its text is "".
    constexpr IpGenPrefix() noexcept = default;

    /// Raises `Vex::RangeError` if the family has fewer than `length` bits, or if
    /// `address` has bits set beyond them; the message then names `covering(...)`.
    constexpr IpGenPrefix(IpGenAddr address, unsigned length) : value_(address, length) {
        if (address.masked(length) != address) {
            throwHostBits(value_);
        }
    }

    /// The network of this length that contains `address`. Raises `Vex::RangeError` if
    /// the family has fewer than `length` bits.
    static constexpr IpGenPrefix covering(IpGenAddr address, unsigned length) {
        return IpGenPrefix(address.masked(length), length);
    }

    /// Reads ADDRESS/LENGTH, where the length is a decimal number without leading zeros,
    /// or "" as the prefix of no family. Raises `Vex::ParseError` for anything else; if
    /// only the host bits are wrong, the message names the prefix that was probably
    /// meant.
    static IpGenPrefix fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<IpGenPrefix> tryFromString(std::string_view text) noexcept;

    /// The address of the network.
    constexpr IpGenAddr const & address() const noexcept { return value_.address(); }

    /// The prefix length in bits.
    constexpr unsigned length() const noexcept { return value_.length(); }

    constexpr Family family() const noexcept { return value_.family(); }

    /// True for the prefix of no family.
    constexpr bool isNone() const noexcept { return value_.isNone(); }

    /// True if the two have an address in common; for prefixes of one family, this means
    /// that one contains the other. Prefixes of different families, or of none, have
    /// nothing in common.
    constexpr bool overlaps(IpGenPrefix const & other) const noexcept {
        unsigned const shared = length() < other.length() ? length() : other.length();
        return !isNone() && address().masked(shared) == other.address().masked(shared);
    }

    /// ADDRESS/LENGTH, or "" for the prefix of no family.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text; the rest of that room can be
    /// overwritten.
    char * writeTo(char * out) const noexcept;

    constexpr bool operator==(IpGenPrefix const & other) const noexcept = default;

    /// Ordered by address, then by length.
    constexpr std::strong_ordering operator<=>(IpGenPrefix const & other) const noexcept = default;

private:
    [[noreturn]] static void throwHostBits(IpGenAddrWithMask const & value);

    IpGenAddrWithMask value_;
};

} // namespace Nolt

template <>
struct std::hash<Nolt::IpGenPrefix> {
    std::size_t operator()(Nolt::IpGenPrefix const & prefix) const noexcept {
        return Vex::keyedHash(prefix.address().low(), prefix.address().highAndFamily(),
                              prefix.length());
    }
};
