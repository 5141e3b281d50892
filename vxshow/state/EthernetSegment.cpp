#include "vxshow/state/EthernetSegment.h"

namespace vxshow::state {

namespace {

constexpr std::string_view digits = "0123456789abcdef";

/// The value of a hexadecimal digit in either case; nullopt if it is none.
std::optional<unsigned> valueOf(char digit) {
    char const lower = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
    auto const at = digits.find(lower);
    return at == std::string_view::npos ? std::nullopt : std::optional<unsigned>(at);
}

} // namespace

std::optional<EthernetSegment> EthernetSegment::tryFromString(std::string_view text) {
    EthernetSegment segment;
    if (text.size() != 3 * segment.bytes_.size() - 1) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < segment.bytes_.size(); ++index) {
        auto const byte = text.substr(3 * index, 3);
        auto const high = valueOf(byte[0]);
        auto const low = valueOf(byte[1]);
        if (!high || !low || (byte.size() == 3 && byte[2] != ':')) {
            return std::nullopt;
        }
        segment.bytes_[index] = static_cast<Vex::U8>(16 * *high + *low);
    }
    return segment;
}

std::string EthernetSegment::stringValue() const {
    std::string text;
    for (unsigned const byte : bytes_) {
        text.append(text.empty() ? "" : ":");
        text.push_back(digits[byte / 16]);
        text.push_back(digits[byte % 16]);
    }
    return text;
}

} // namespace vxshow::state
