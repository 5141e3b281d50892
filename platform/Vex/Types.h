#pragma once

#include <cstdint>

/// The integer types that the framework's interfaces are written in.
namespace Vex {

using U8 = std::uint8_t;
using U16 = std::uint16_t;
using U32 = std::uint32_t;
using U64 = std::uint64_t;

} // namespace Vex
