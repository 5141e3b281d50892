#include "fuzz/harness/JsonTokens.h"

#include <algorithm>

namespace fuzz {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view marks = "{}[]:,";

std::size_t stringLength(std::string_view text) {
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\\') {
            ++at;
        } else if (text[at] == '"') {
            return at + 1;
        }
    }
    return text.size();
}

std::size_t tokenLength(std::string_view text) {
    if (text[0] == '"') {
        return stringLength(text);
    }
    if (marks.find(text[0]) != std::string_view::npos) {
        return 1;
    }
    bool const blank = blanks.find(text[0]) != std::string_view::npos;
    auto const end = blank ? text.find_first_not_of(blanks) : text.find_first_of(" \t\r\n{}[]:,\"");
    return std::min(end, text.size());
}

bool isBlank(std::string_view token) {
    return blanks.find(token[0]) != std::string_view::npos;
}

} // namespace

std::vector<std::string_view> jsonTokens(std::string_view text) {
    std::vector<std::string_view> tokens;
    while (!text.empty()) {
        auto const length = tokenLength(text);
        tokens.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return tokens;
}

std::size_t pastJsonValue(std::vector<std::string_view> const & tokens, std::size_t first) {
    std::size_t depth = 0;
    for (std::size_t at = first; at < tokens.size(); ++at) {
        auto const token = tokens[at];
        if (token == "{" || token == "[") {
            ++depth;
        } else if ((token == "}" || token == "]") && depth > 0) {
            --depth;
        }
        if (depth > 0 || isBlank(token)) {
            continue;
        }
        auto next = at + 1;
        while (next < tokens.size() && isBlank(tokens[next])) {
            ++next;
        }
        bool const goesOn =
            token == ":" || (next < tokens.size() && tokens[next] == ":" && token[0] == '"');
        if (!goesOn) {
            return at + 1;
        }
    }
    return tokens.size();
}

} // namespace fuzz
