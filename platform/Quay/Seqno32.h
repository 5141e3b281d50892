#pragma once

#include "Vex/KeyedHash.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <compare>
#include <functional>
#include <optional>
#include <string_view>

namespace [[gnu::visibility("default")]] Quay {

/// A 32-bit change counter. The default is 0.
///
/// Ordered as a number. A counter that has wrapped cannot be told from one that has not,
/// so there is no arithmetic modulo 2^32 (RFC 1982) here.
class Seqno32 {
public:
    /// Length of the longest text, 4294967295.
    static constexpr std::size_t maxTextLength = 10;

    constexpr Seqno32() noexcept = default;

    constexpr explicit Seqno32(Vex::U32 value) noexcept : value_(value) {}

    /// Reads a decimal number from 0 to 4294967295; no sign, no blanks, no leading zeros.
    /// Raises `Vex::RangeError` for a greater number, `Vex::ParseError` for anything else.
    static Seqno32 fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<Seqno32> tryFromString(std::string_view text) noexcept;

    constexpr Vex::U32 value() const noexcept { return value_; }

    /// True for 0.
    constexpr bool isZero() const noexcept { return value_ == 0; }

    /// The decimal number.
    Vex::String stringValue() const;

    /// Writes `stringValue()` to `out`, which has room for `maxTextLength` bytes, without
    /// a terminating NUL. Returns the end of the text.
    char * writeTo(char * out) const noexcept;

    constexpr bool operator==(Seqno32 const & other) const noexcept = default;
    constexpr std::strong_ordering operator<=>(Seqno32 const & other) const noexcept = default;

private:
    Vex::U32 value_ = 0;
};

} // namespace Quay

template <>
struct std::hash<Quay::Seqno32> {
    std::size_t operator()(Quay::Seqno32 number) const noexcept {
        return Vex::keyedHash(number.value());
    }
};
