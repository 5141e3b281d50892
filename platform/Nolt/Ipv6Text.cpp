#include "Nolt/Ipv6Text.h"

#include "Nolt/IpAddr.h"
#include "Vex/Digits.h"

#include <algorithm>
#include <array>

namespace Nolt {

using Vex::U32;
using Vex::U64;
using Vex::U8;

namespace {

constexpr std::size_t groupCount = 8;
using Groups = std::array<U32, groupCount>;

struct Run {
    std::size_t start = 0;
    std::size_t length = 0;
};

std::optional<U32> readGroup(std::string_view text) noexcept {
    if (text.empty() || text.size() > 4) {
        return std::nullopt;
    }
    U32 group = 0;
    for (char const digit : text) {
        U8 const value = Vex::hexValue(digit);
        if (value == Vex::noHexDigit) {
            return std::nullopt;
        }
        group = group << 4 | value;
    }
    return group;
}

Ipv6Halves joined(Groups const & groups) noexcept {
    Ipv6Halves halves;
    for (std::size_t index = 0; index < groupCount / 2; ++index) {
        halves.high = halves.high << 16 | groups[index];
        halves.low = halves.low << 16 | groups[index + groupCount / 2];
    }
    return halves;
}

Groups split(Ipv6Halves address) noexcept {
    Groups groups;
    for (std::size_t index = groupCount / 2; index-- > 0;) {
        groups[index] = address.high & 0xFFFF;
        groups[index + groupCount / 2] = address.low & 0xFFFF;
        address.high >>= 16;
        address.low >>= 16;
    }
    return groups;
}

/// The longest run of zero groups, or the first of several equally long ones; of length 0
/// if no group is zero.
Run longestZeroRun(Groups const & groups) noexcept {
    Run longest;
    Run current;
    for (std::size_t index = 0; index < groupCount; ++index) {
        if (groups[index] != 0) {
            current = {index + 1, 0};
        } else if (++current.length > longest.length) {
            longest = current;
        }
    }
    return longest;
}

char * writeGroup(char * out, U32 group) noexcept {
    for (unsigned shift = 12; shift > 0; shift -= 4) {
        if (group >> shift != 0) {
            *out++ = Vex::hexDigits[group >> shift & 0xF];
        }
    }
    *out++ = Vex::hexDigits[group & 0xF];
    return out;
}

} // namespace

std::optional<Ipv6Halves> readIpv6(std::string_view text) noexcept {
    Groups groups{};
    std::size_t count = 0;
    std::optional<std::size_t> gap;
    if (text.starts_with("::")) {
        gap = 0;
        text.remove_prefix(2);
    } else if (text.empty()) {
        return std::nullopt;
    }
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, text.find(':'));
        bool const last = piece.size() == text.size();
        if (last && piece.find('.') != std::string_view::npos) {
            auto const quad = IpAddr::tryFromString(piece);
            if (!quad || count > groupCount - 2) {
                return std::nullopt;
            }
            groups[count++] = quad->value() >> 16;
            groups[count++] = quad->value() & 0xFFFF;
            break;
        }
        auto const group = readGroup(piece);
        if (!group || count == groupCount) {
            return std::nullopt;
        }
        groups[count++] = *group;
        if (last) {
            break;
        }
        text.remove_prefix(piece.size() + 1);
        if (text.starts_with(':')) {
            if (gap) {
                return std::nullopt;
            }
            gap = count;
            text.remove_prefix(1);
        } else if (text.empty()) {
            return std::nullopt;
        }
    }
    if (gap ? count == groupCount : count < groupCount) {
        return std::nullopt;
    }
    if (gap) {
        auto const tail = groups.begin() + static_cast<std::ptrdiff_t>(*gap);
        std::rotate(tail, groups.begin() + static_cast<std::ptrdiff_t>(count), groups.end());
    }
    return joined(groups);
}

char * writeIpv6(char * out, Ipv6Halves address) noexcept {
    constexpr U64 mapped = 0xFFFF;
    if (address.high == 0 && address.low >> 32 == mapped) {
        constexpr std::string_view prefix = "::ffff:";
        out = std::copy(prefix.begin(), prefix.end(), out);
        return IpAddr(static_cast<U32>(address.low)).writeTo(out);
    }
    Groups const groups = split(address);
    Run const zeros = longestZeroRun(groups);
    bool const compress = zeros.length > 1;
    for (std::size_t index = 0; index < groupCount;) {
        if (compress && index == zeros.start) {
            *out++ = ':';
            *out++ = ':';
            index += zeros.length;
            continue;
        }
        bool const afterGap = compress && index == zeros.start + zeros.length;
        if (index > 0 && !afterGap) {
            *out++ = ':';
        }
        out = writeGroup(out, groups[index]);
        ++index;
    }
    return out;
}

} // namespace Nolt
