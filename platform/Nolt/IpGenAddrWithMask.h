#pragma once

#include "Nolt/IpGenAddr.h"

namespace [[gnu::visibility("default")]] Nolt {

/// The address of an interface with the length of its prefix: 10.1.2.3/24. The host bits
/// are kept, since they are the interface's own; use `IpGenPrefix` for a network.
class IpGenAddrWithMask {
public:
    /// Length of the longest text, an IPv6 address with "/128".
    static constexpr std::size_t maxTextLength = IpGenAddr::maxTextLength + 4;

    /// No text of `writeTo` needs escapes in JSON.
    static constexpr bool textIsPlain = true;

    /// The empty address with length 0; its text is "".
    constexpr IpGenAddrWithMask() noexcept = default;

    /// Raises `Vex::RangeError` if the family has fewer than `length` bits (IPv4 has 32,
    /// IPv6 128, no family 0).
    constexpr IpGenAddrWithMask(IpGenAddr address, unsigned length)
        : address_(address), length_(static_cast<Vex::U8>(length)) {
        if (length > address.bitLength()) {
            throwTooLong(address, length);
        }
    }

    /// Reads ADDRESS/LENGTH, where the length is a decimal number without leading zeros,
    /// or "" as the empty address. Raises `Vex::ParseError` for anything else.
    static IpGenAddrWithMask fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<IpGenAddrWithMask> tryFromString(std::string_view text) noexcept;

    /// The address with its host bits.
    constexpr IpGenAddr const & address() const noexcept { return address_; }

    /// The prefix length in bits.
    constexpr unsigned length() const noexcept { return length_; }

    constexpr Family family() const noexcept { return address_.family(); }

    /// True for the empty address.
    constexpr bool isNone() const noexcept { return address_.isNone(); }

    /// ADDRESS/LENGTH, or "" for the empty address.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text; the rest of that room can be
    /// overwritten.
    char * writeTo(char * out) const noexcept;

    constexpr bool operator==(IpGenAddrWithMask const & other) const noexcept = default;

    /// Ordered by address, then by length.
    constexpr std::strong_ordering
    operator<=>(IpGenAddrWithMask const & other) const noexcept = default;

private:
    [[noreturn]] static void throwTooLong(IpGenAddr const & address, unsigned length);

    IpGenAddr address_;
    Vex::U8 length_ = 0;
};

} // namespace Nolt

template <>
struct std::hash<Nolt::IpGenAddrWithMask> {
    std::size_t operator()(Nolt::IpGenAddrWithMask const & value) const noexcept {
        return Vex::keyedHash(value.address().low(), value.address().highAndFamily(),
                              value.length());
    }
};
