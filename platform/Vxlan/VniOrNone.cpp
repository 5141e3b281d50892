#include "Vxlan/VniOrNone.h"

#include <array>
#include <charconv>

namespace [[gnu::visibility("default")]] Vxlan {

VniOrNone VniOrNone::fromString(std::string_view text) {
    return text.empty() ? VniOrNone() : Vni::fromString(text);
}

std::optional<VniOrNone> VniOrNone::tryFromString(std::string_view text) noexcept {
    if (text.empty()) {
        return VniOrNone();
    }
    return Vni::tryFromString(text);
}

Vex::String VniOrNone::stringValue(bool dotted) const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data(), dotted));
}

char * VniOrNone::writeTo(char * out, bool dotted) const noexcept {
    if (isNone()) {
        return out;
    }
    if (value_ > Vni::max) {
        return std::to_chars(out, out + maxTextLength, value_).ptr;
    }
    return Vni(value_).writeTo(out, dotted);
}

} // namespace Vxlan
