#pragma once

#include "Vex/Types.h"

#include <array>
#include <charconv>
#include <string>

namespace Pelo {

/// A number as error messages show it: 0x1f.
inline std::string hexText(Vex::U64 number) {
    std::array<char, 16> digits;
    auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return std::string("0x").append(digits.data(), written.ptr);
}

} // namespace Pelo
