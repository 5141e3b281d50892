#include "Bridging/VlanIdOrNone.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"

#include <array>
#include <charconv>
#include <limits>

namespace [[gnu::visibility("default")]] Bridging {

using Vex::U16;

VlanIdOrNone VlanIdOrNone::fromString(std::string_view text) {
    if (auto const vlan = tryFromString(text)) {
        return *vlan;
    }
    Vex::refuseNumber(text, "a VLAN number from 0 to 65535, 0 for none");
}

std::optional<VlanIdOrNone> VlanIdOrNone::tryFromString(std::string_view text) noexcept {
    auto const value = Vex::readDecimal(text, std::numeric_limits<U16>::max());
    if (!value) {
        return std::nullopt;
    }
    return VlanIdOrNone(static_cast<U16>(*value));
}

Vex::String VlanIdOrNone::stringValue() const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data()));
}

char * VlanIdOrNone::writeTo(char * out) const noexcept {
    return std::to_chars(out, out + maxTextLength, value_).ptr;
}

} // namespace Bridging
