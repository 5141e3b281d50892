#include "vxshow/sources/frr/Uptime.h"

#include <array>
#include <limits>

namespace vxshow::sources::frr {

namespace {

constexpr Vex::U64 minute = 60;
constexpr Vex::U64 hour = 60 * minute;
constexpr Vex::U64 day = 24 * hour;

/// Each number of a form is followed by its mark; the last one of the clock by the end.
struct Unit {
    char mark;
    Vex::U64 seconds;
};

using Form = std::array<Unit, 3>;

constexpr std::array<Form, 3> forms{{
    {{{':', hour}, {':', minute}, {'\0', 1}}},
    {{{'d', day}, {'h', hour}, {'m', minute}}},
    {{{'w', 7 * day}, {'d', day}, {'h', hour}}},
}};

/// Takes up to four digits from the front of `text`; nullopt if it starts with none.
std::optional<Vex::U64> takeNumber(std::string_view & text) {
    constexpr std::size_t most = 4;
    Vex::U64 number = 0;
    std::size_t at = 0;
    for (; at < text.size() && at < most && text[at] >= '0' && text[at] <= '9'; ++at) {
        number = 10 * number + static_cast<Vex::U64>(text[at] - '0');
    }
    text.remove_prefix(at);
    return at == 0 ? std::nullopt : std::optional(number);
}

std::optional<Vex::U64> readForm(std::string_view text, Form const & form) {
    Vex::U64 seconds = 0;
    for (Unit const & unit : form) {
        auto const number = takeNumber(text);
        if (!number || text.empty() != (unit.mark == '\0') ||
            (!text.empty() && text.front() != unit.mark)) {
            return std::nullopt;
        }
        text.remove_prefix(text.empty() ? 0 : 1);
        seconds += *number * unit.seconds;
    }
    return text.empty() ? std::optional(seconds) : std::nullopt;
}

} // namespace

std::optional<Vex::U32> readUptime(std::string_view text) {
    for (Form const & form : forms) {
        auto const seconds = readForm(text, form);
        if (seconds && *seconds <= std::numeric_limits<Vex::U32>::max()) {
            return static_cast<Vex::U32>(*seconds);
        }
    }
    return std::nullopt;
}

} // namespace vxshow::sources::frr
