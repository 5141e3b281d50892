#include "vxshow/listing/CellText.h"

namespace vxshow::listing {

void appendEscaped(std::string & text, char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    auto const value = static_cast<unsigned char>(byte);
    text.append("\\x").append(1, digits[value >> 4]).append(1, digits[value & 0xF]);
}

} // namespace vxshow::listing
