#include "vxshow/state/narrow/NamePatterns.h"

#include <algorithm>
#include <cstddef>

namespace vxshow::state::narrow {

namespace {

/// The position after the character at `at`.
std::size_t afterCharacter(std::string_view text, std::size_t at) {
    do {
        ++at;
    } while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U);
    return at;
}

} // namespace

bool matchesPattern(std::string_view pattern, std::string_view name) {
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    // Only the last star is tried again: what an earlier one would take more, this one takes.
    std::size_t afterStar = std::string_view::npos;
    std::size_t starEnd = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            afterStar = ++inPattern;
            starEnd = inName;
        } else if (inPattern < pattern.size() && pattern[inPattern] == '?') {
            ++inPattern;
            inName = afterCharacter(name, inName);
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[inName]) {
            ++inPattern;
            ++inName;
        } else if (afterStar != std::string_view::npos) {
            inPattern = afterStar;
            inName = starEnd = afterCharacter(name, starEnd);
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

bool isPattern(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

bool NamePatterns::contains(std::string_view name) const {
    return names_.find(name) != names_.end() ||
           std::any_of(patterns_.begin(), patterns_.end(),
                       [&](std::string const & pattern) { return matchesPattern(pattern, name); });
}

} // namespace vxshow::state::narrow
