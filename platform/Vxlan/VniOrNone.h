#pragma once

#include "Vxlan/Vni.h"

namespace [[gnu::visibility("default")]] Vxlan {

/// A VNI or none, which as a filter means every VNI. The default is none.
///
/// It can be built from any number: the commands that apply the filter check its range,
/// through `vni()`, when they use it. So a value above `none` is neither none nor a VNI,
/// and is kept as it is.
class VniOrNone {
public:
    /// The number that means none: the first one above all VNIs.
    static constexpr Vex::U32 none = 0x1000000;

    /// Length of the longest text.
    static constexpr std::size_t maxTextLength = Vni::maxTextLength;

    constexpr VniOrNone() noexcept = default;

    /// Takes any number, unchecked.
    constexpr explicit VniOrNone(Vex::U32 value) noexcept : value_(value) {}

    /// Implicit, since every VNI is a valid `VniOrNone`.
    constexpr VniOrNone(Vni vni) noexcept : value_(vni.value()) {}

    /// Reads what `Vni` reads, or "" as none. Raises what `Vni` raises for anything else.
    static VniOrNone fromString(std::string_view text);

    /// As `fromString`, but returns nullopt instead of raising an error.
    static std::optional<VniOrNone> tryFromString(std::string_view text) noexcept;

    constexpr bool isNone() const noexcept { return value_ == none; }

    /// As a filter: whether it lets `vni` through, as none does with every VNI.
    constexpr bool matches(Vni vni) const noexcept { return isNone() || value_ == vni.value(); }

    /// The number as given; `none` for none.
    constexpr Vex::U32 value() const noexcept { return value_; }

    /// The VNI. Raises `Vex::RangeError` for none and for every number above `none`.
    constexpr Vni vni() const { return Vni(value_); }

    /// As `Vni::stringValue(dotted)`; "" for none; decimal for a number above `none`.
    Vex::String stringValue(bool dotted = false) const;

    /// Writes `stringValue(dotted)` to `out`, which has room for `maxTextLength` bytes,
    /// without a terminating NUL. Returns the end of the text.
    char * writeTo(char * out, bool dotted = false) const noexcept;

    constexpr bool operator==(VniOrNone const & other) const noexcept = default;

    /// Ordered as numbers, so every VNI comes before none.
    constexpr std::strong_ordering operator<=>(VniOrNone const & other) const noexcept = default;

private:
    Vex::U32 value_ = none;
};

} // namespace Vxlan

template <>
struct std::hash<Vxlan::VniOrNone> {
    std::size_t operator()(Vxlan::VniOrNone vni) const noexcept {
        return Vex::keyedHash(vni.value());
    }
};
