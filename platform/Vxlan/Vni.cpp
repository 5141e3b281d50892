#include "Vxlan/Vni.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"

#include <array>
#include <charconv>

namespace [[gnu::visibility("default")]] Vxlan {

namespace {

using Vex::U32;

std::optional<U32> readDotted(std::string_view text) noexcept {
    U32 value = 0;
    for (unsigned index = 0; index < 3; ++index) {
        auto const dot = index < 2 ? text.find('.') : text.size();
        if (dot == std::string_view::npos) {
            return std::nullopt;
        }
        auto const byte = Vex::readDecimal(text.substr(0, dot), 255);
        if (!byte) {
            return std::nullopt;
        }
        value = value << 8 | *byte;
        text.remove_prefix(index < 2 ? dot + 1 : dot);
    }
    return value;
}

} // namespace

void Vni::throwOutOfRange() {
    throw Vex::RangeError("Vni::value < Vni::min or > Vni::max not allowed");
}

Vni Vni::fromString(std::string_view text) {
    if (auto const vni = tryFromString(text)) {
        return *vni;
    }
    Vex::refuseNumber(text, "a VNI from 0 to 16777215, decimal or dotted such as 0.16.2");
}

std::optional<Vni> Vni::tryFromString(std::string_view text) noexcept {
    bool const dotted = text.find('.') != std::string_view::npos;
    auto const value = dotted ? readDotted(text) : Vex::readDecimal(text, max);
    if (!value) {
        return std::nullopt;
    }
    return Vni(*value);
}

Vex::String Vni::stringValue(bool dotted) const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data(), dotted));
}

char * Vni::writeTo(char * out, bool dotted) const noexcept {
    char * const end = out + maxTextLength;
    if (!dotted) {
        return std::to_chars(out, end, value_).ptr;
    }
    out = std::to_chars(out, end, value_ >> 16).ptr;
    *out++ = '.';
    out = std::to_chars(out, end, value_ >> 8 & 0xFF).ptr;
    *out++ = '.';
    return std::to_chars(out, end, value_ & 0xFF).ptr;
}

} // namespace Vxlan
