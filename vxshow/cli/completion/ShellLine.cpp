#include "vxshow/cli/completion/ShellLine.h"

namespace vxshow::cli::completion {

namespace {

constexpr std::string_view blanks = " \t\n";
constexpr std::string_view specialInDoubleQuotes = "\"\\$`!";

/// A character that means itself in every shell word, wherever it stands in it.
bool isPlain(char c) {
    constexpr std::string_view plain = "_-./,:=@%+";
    bool const isLetterOrDigit =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    return isLetterOrDigit || plain.find(c) != std::string_view::npos ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::string withBackslashes(std::string_view text) {
    std::string word;
    for (char const c : text) {
        if (!isPlain(c)) {
            word += '\\';
        }
        word += c;
    }
    return word;
}

/// Adds `c`, which stands in quotes. `next` is the character after it, or 0. Returns whether that
/// one was taken, too.
bool addQuoted(TypedWord & word, char c, char next) {
    if (c == word.openQuote) {
        word.openQuote = 0;
        word.quoted = true;
        return false;
    }
    bool const isEscape = word.openQuote == '"' && c == '\\' && next != 0 &&
                          specialInDoubleQuotes.find(next) != std::string_view::npos;
    word.text += isEscape ? next : c;
    return isEscape;
}

} // namespace

TypedLine splitLine(std::string_view line, std::string_view breaks) {
    TypedLine typed;
    bool inWord = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        char const c = line[i];
        char const next = i + 1 < line.size() ? line[i + 1] : '\0';
        TypedWord & word = typed.word;
        if (word.openQuote == 0 && blanks.find(c) != std::string_view::npos) {
            if (inWord) {
                typed.before.push_back(word.text);
            }
            word = {};
            inWord = false;
            continue;
        }
        inWord = true;
        word.raw += c;
        bool tookNext = false;
        if (word.openQuote != 0) {
            tookNext = addQuoted(word, c, next);
        } else if (c == '\'' || c == '"') {
            word.openQuote = c;
            word.kept = word.raw.size();
        } else if (c == '\\' && next != 0) {
            word.text += next;
            tookNext = true;
        } else {
            word.text += c;
            if (breaks.find(c) != std::string_view::npos) {
                word.kept = word.raw.size();
            }
        }
        if (tookNext) {
            word.raw += next;
            ++i;
        }
    }
    return typed;
}

std::optional<std::string> replacement(TypedWord const & word, std::string_view text) {
    if (word.quoted || !text.starts_with(word.text)) {
        return std::nullopt;
    }
    std::string whole;
    if (word.openQuote == 0) {
        whole = withBackslashes(text);
    } else {
        // Before the quote stands what the shell takes as it is, or nothing is offered.
        std::string const special =
            word.openQuote == '"' ? std::string(specialInDoubleQuotes) : std::string("'!");
        std::string_view const before = std::string_view(word.raw).substr(0, word.kept - 1);
        if (!text.starts_with(before) || text.find_first_of(special) != std::string_view::npos) {
            return std::nullopt;
        }
        whole = std::string(before) + word.openQuote + std::string(text.substr(before.size()));
    }
    if (!whole.starts_with(word.raw)) {
        return std::nullopt;
    }
    return whole.substr(word.kept);
}

} // namespace vxshow::cli::completion
