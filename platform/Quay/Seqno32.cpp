#include "Quay/Seqno32.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"

#include <array>
#include <charconv>
#include <limits>

namespace [[gnu::visibility("default")]] Quay {

Seqno32 Seqno32::fromString(std::string_view text) {
    if (auto const number = tryFromString(text)) {
        return *number;
    }
    Vex::refuseNumber(text, "a number from 0 to 4294967295");
}

std::optional<Seqno32> Seqno32::tryFromString(std::string_view text) noexcept {
    auto const value = Vex::readDecimal(text, std::numeric_limits<Vex::U32>::max());
    if (!value) {
        return std::nullopt;
    }
    return Seqno32(*value);
}

Vex::String Seqno32::stringValue() const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data()));
}

char * Seqno32::writeTo(char * out) const noexcept {
    return std::to_chars(out, out + maxTextLength, value_).ptr;
}

} // namespace Quay
