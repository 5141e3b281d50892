#pragma once

#include "Vex/Types.h"

#include <cstddef>

/// How the fields of keys and values become bytes: numbers of a fixed width, most
/// significant byte first, one after the other. Copying the C++ objects would include
/// their padding, and two equal keys could then have different bytes.
namespace Pelo {

/// Writes the lower `width` bytes of `number` to `out`; returns the position after them.
template <std::size_t width>
constexpr Vex::U8 * writeNumber(Vex::U8 * out, Vex::U64 number) noexcept {
    static_assert(width >= 1 && width <= 8);
    for (std::size_t i = 0; i < width; ++i) {
        out[i] = static_cast<Vex::U8>(number >> (8 * (width - 1 - i)));
    }
    return out + width;
}

/// Reads a number of `width` bytes.
template <std::size_t width>
constexpr Vex::U64 readNumber(Vex::U8 const * in) noexcept {
    static_assert(width >= 1 && width <= 8);
    Vex::U64 number = 0;
    for (std::size_t i = 0; i < width; ++i) {
        number = number << 8 | in[i];
    }
    return number;
}

} // namespace Pelo
