#include "vxshow/system/UtcTime.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vxshow::system {

namespace {

using namespace std::chrono;

/// Takes exactly `digits` digits and then `mark` from the front of `text`; nullopt if they are not
/// there.
std::optional<unsigned> takeNumber(std::string_view & text, std::size_t digits, char mark) {
    if (text.size() <= digits || text[digits] != mark) {
        return std::nullopt;
    }
    unsigned number = 0;
    for (char const c : text.substr(0, digits)) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        number = 10 * number + static_cast<unsigned>(c - '0');
    }
    text.remove_prefix(digits + 1);
    return number;
}

/// The fraction of a second that `text` starts with, up to a "Z" at its end.
std::optional<milliseconds> readFraction(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    if (text.size() < 2 || text.size() > mostDigits + 1 || text.back() != 'Z') {
        return std::nullopt;
    }
    text.remove_suffix(1);
    int thousandths = 0;
    for (std::size_t at = 0; at < std::max<std::size_t>(text.size(), 3); ++at) {
        char const c = at < text.size() ? text[at] : '0';
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        thousandths = at < 3 ? 10 * thousandths + (c - '0') : thousandths;
    }
    return milliseconds(thousandths);
}

std::optional<milliseconds> readTimeOfDay(std::string_view text) {
    auto const hour = takeNumber(text, 2, ':');
    auto const minute = hour ? takeNumber(text, 2, ':') : std::nullopt;
    if (!minute || *hour > 23 || *minute > 59) {
        return std::nullopt;
    }
    auto rest = text;
    auto fraction = std::optional(milliseconds(0));
    auto second = takeNumber(rest, 2, 'Z');
    if (second && !rest.empty()) {
        return std::nullopt;
    }
    if (!second) {
        second = takeNumber(text, 2, '.');
        fraction = second ? readFraction(text) : std::nullopt;
    }
    if (!fraction || *second > 59) {
        return std::nullopt;
    }
    return hours(*hour) + minutes(*minute) + seconds(*second) + *fraction;
}

} // namespace

UtcTime UtcTime::now() {
    return UtcTime(time_point_cast<milliseconds>(system_clock::now()));
}

std::optional<UtcTime> UtcTime::tryFromString(std::string_view text) {
    auto const y = takeNumber(text, 4, '-');
    auto const m = y ? takeNumber(text, 2, '-') : std::nullopt;
    auto const d = m ? takeNumber(text, 2, 'T') : std::nullopt;
    if (!d) {
        return std::nullopt;
    }
    year_month_day const date(year(static_cast<int>(*y)), month(*m), day(*d));
    auto const time = readTimeOfDay(text);
    if (!date.ok() || !time) {
        return std::nullopt;
    }
    return UtcTime(sys_days(date) + *time);
}

std::string UtcTime::stringValue() const {
    auto const midnight = floor<days>(time_);
    year_month_day const date(midnight);
    hh_mm_ss const time(time_ - midnight);
    constexpr int years = 10000;
    std::array<char, 64> text{};
    int const length = std::snprintf(
        text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ",
        (static_cast<int>(date.year()) % years + years) % years,
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace vxshow::system
