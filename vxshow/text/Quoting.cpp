#include "vxshow/text/Quoting.h"

#include "Vex/Errors.h"
#include "vxshow/text/JsonTokens.h"

#include <algorithm>

namespace vxshow::text {

namespace {

constexpr std::size_t longestText = 60;

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

bool isPlainWord(std::string_view text) {
    auto const startsAsNumber = [&] {
        return text[0] == '-' || (text[0] >= '0' && text[0] <= '9');
    };
    return !text.empty() && text.size() <= longestText && !startsAsNumber() &&
           std::all_of(text.begin(), text.end(), isWordCharacter);
}

} // namespace

std::string shownText(std::string_view text) {
    std::string shown = Vex::printable(text.substr(0, longestText));
    return text.size() > longestText ? shown.append("...") : shown;
}

std::string shownInQuotes(std::string_view text) {
    return '"' + shownText(text) + '"';
}

std::string shownToken(std::string_view document, std::size_t position) {
    if (position >= document.size()) {
        return "the end of the file";
    }
    auto const token = tokenAt(document, position);
    if (token.starts_with("\xEF\xBB\xBF")) {
        return "a byte order mark";
    }
    switch (token[0]) {
    case '{':
        return "an object";
    case '[':
        return "an array";
    case '}':
    case ']':
    case ':':
    case ',':
        return {'\'', token[0], '\''};
    case '"':
        return shownInQuotes(stringContent(token));
    default:
        return shownText(token);
    }
}

std::string shownMember(std::string_view raw) {
    return isPlainWord(raw) ? std::string(raw) : shownInQuotes(raw);
}

} // namespace vxshow::text
