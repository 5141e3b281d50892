#include "vxshow/cli/filter/NameFilter.h"

#include "Vex/Errors.h"
#include "vxshow/state/SourceNames.h"

namespace vxshow::cli::filter {

namespace {

using state::isSourceWord;
using state::narrow::NamePatterns;

constexpr std::string_view literally = "name:";

/// Calls `name(text, isLiteral)` for each name, and `pattern(text)` for each pattern.
template <class TakeName, class TakePattern>
void forEachName(Texts const & texts, TakeName && name, TakePattern && pattern) {
    for (std::string_view const text : texts) {
        if (text.starts_with(literally)) {
            if (text.size() == literally.size()) {
                throw ValueError(Vex::quoted(text) + ": expected a name after " +
                                 std::string(literally));
            }
            name(text.substr(literally.size()), true);
            continue;
        }
        for (std::string_view const part : splitAtCommas(text)) {
            if (part.empty()) {
                throw ValueError(Vex::quoted(text) + ": expected a name" +
                                 (text.empty() ? "" : " on both sides of each comma"));
            }
            if (state::narrow::isPattern(part)) {
                pattern(part);
            } else {
                name(part, false);
            }
        }
    }
}

bool isOneEmptyText(Texts const & texts) {
    return texts.size() == 1 && texts.front().empty();
}

} // namespace

NamePatterns NameFilter::all() const {
    NamePatterns asked = many;
    if (!one.empty()) {
        asked.addName(one);
    }
    return asked;
}

NameFilter readNames(Texts const & texts) {
    NameFilter filter;
    if (isOneEmptyText(texts)) {
        return filter;
    }
    forEachName(
        texts,
        [&](std::string_view name, bool /* isLiteral */) {
            filter.many.addName(std::string(name));
        },
        [&](std::string_view pattern) { filter.many.addPattern(std::string(pattern)); });
    if (filter.many.names().size() == 1 && filter.many.patterns().empty()) {
        return {*filter.many.names().begin(), {}};
    }
    return filter;
}

bool SourceFilter::takesSource(std::string_view name) const {
    return name == state::hscName    ? hsc
           : name == state::qvxName  ? qvx
           : name == state::evpnName ? evpn
                                     : false;
}

NamePatterns SourceFilter::askedSwitches() const {
    NamePatterns asked = switches;
    if (!one.empty() && !isSourceWord(one)) {
        asked.addName(one);
    }
    return asked;
}

SourceFilter readSources(Texts const & texts) {
    SourceFilter filter;
    if (isOneEmptyText(texts)) {
        return filter;
    }
    std::size_t words = 0;
    forEachName(
        texts,
        [&](std::string_view name, bool isLiteral) {
            if (isLiteral || !isSourceWord(name)) {
                filter.switches.addName(std::string(name));
                return;
            }
            ++words;
            filter.one = name;
            (name == "all"   ? filter.everySwitch
             : name == "hsc" ? filter.hsc
             : name == "qvx" ? filter.qvx
                             : filter.evpn) = true;
        },
        [&](std::string_view pattern) { filter.switches.addPattern(std::string(pattern)); });
    auto const & names = filter.switches.names();
    if (words == 1 && filter.switches.empty()) {
        return {.one = filter.one};
    }
    // The library would take the name of a switch that is such a word for the word.
    if (words == 0 && names.size() == 1 && filter.switches.patterns().empty() &&
        !isSourceWord(*names.begin())) {
        return {.one = *names.begin()};
    }
    filter.one.clear();
    filter.isList = true;
    return filter;
}

} // namespace vxshow::cli::filter
