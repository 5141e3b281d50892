#include "vxshow/cli/filter/MacPrefix.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"
#include "vxshow/cli/filter/FilterValues.h"

#include <cstddef>
#include <string>

namespace vxshow::cli::filter {

namespace {

constexpr unsigned bitsOfMac = 48;

constexpr char const * aMacPrefix =
    ": expected an Ethernet address prefix such as 00:1c:73/24 or 00:1c:73:*";

[[noreturn]] void refusePrefix(std::string_view text) {
    throw ValueError(Vex::quoted(text) + aMacPrefix);
}

/// The first bytes of an address.
struct LeadingBytes {
    Vex::U64 value = 0; ///< as an address, with zeros for the bytes that are missing
    unsigned bits = 0;
};

std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    char const lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(static_cast<unsigned>(lower - 'a') + 10)
                                        : std::nullopt;
}

/// How many digits stand between two separators; none for a character that is no separator.
std::optional<std::size_t> groupSize(char separator) {
    return separator == '.'                       ? std::optional<std::size_t>(4)
           : separator == ':' || separator == '-' ? std::optional<std::size_t>(2)
                                                  : std::nullopt;
}

/// Reads whole bytes, at most six, with one kind of separator or none; nullopt for anything else.
std::optional<LeadingBytes> readBytes(std::string_view text) {
    auto const firstSeparator = text.find_first_of(":-.");
    bool const bare = firstSeparator == std::string_view::npos;
    char const separator = bare ? ':' : text[firstSeparator];
    std::size_t const group = bare ? bitsOfMac / 4 : *groupSize(separator);
    LeadingBytes bytes;
    std::size_t inGroup = 0;
    for (char const c : text) {
        if (inGroup == group) {
            if (c != separator) {
                return std::nullopt;
            }
            inGroup = 0;
            continue;
        }
        auto const digit = hexDigit(c);
        if (!digit || bytes.bits == bitsOfMac) {
            return std::nullopt;
        }
        bytes.value = bytes.value << 4 | *digit;
        bytes.bits += 4;
        ++inGroup;
    }
    if (bytes.bits == 0 || bytes.bits % 8 != 0 || inGroup == 0) {
        return std::nullopt;
    }
    bytes.value <<= bitsOfMac - bytes.bits;
    return bytes;
}

Vex::U64 hostMask(unsigned length) {
    return (Vex::U64{1} << (bitsOfMac - length)) - 1;
}

} // namespace

std::optional<Nolt::EthAddr> readBareMac(std::string_view text) {
    auto const bytes =
        text.find_first_of(":-.") == std::string_view::npos ? readBytes(text) : std::nullopt;
    return bytes && bytes->bits == bitsOfMac ? std::optional(Nolt::EthAddr::ofValue(bytes->value))
                                             : std::nullopt;
}

bool isMacPrefix(std::string_view text) {
    return text.find_first_of("/*") != std::string_view::npos;
}

state::narrow::Intervals<Nolt::EthAddr>::Interval readMacPrefix(std::string_view text) {
    auto const slash = text.find('/');
    auto typed = text.substr(0, slash);
    if (slash == std::string_view::npos) {
        if (!typed.ends_with('*')) {
            refusePrefix(text);
        }
        typed.remove_suffix(1);
        if (!typed.empty() && groupSize(typed.back())) {
            typed.remove_suffix(1);
        }
    }
    auto const bytes = readBytes(typed);
    auto const length = !bytes ? std::nullopt
                        : slash == std::string_view::npos
                            ? std::optional<Vex::U32>(bytes->bits)
                            : Vex::readDecimal(text.substr(slash + 1), bytes->bits);
    if (!length) {
        refusePrefix(text);
    }
    Vex::U64 const host = hostMask(*length);
    if ((bytes->value & host) != 0) {
        throw ValueError(Vex::quoted(text) + ": expected " +
                         std::string(Nolt::EthAddr::ofValue(bytes->value & ~host).stringValue()) +
                         "/" + std::to_string(*length) +
                         ", with no bits set beyond the prefix length");
    }
    return {Nolt::EthAddr::ofValue(bytes->value), Nolt::EthAddr::ofValue(bytes->value | host)};
}

} // namespace vxshow::cli::filter
