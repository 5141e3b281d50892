#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Words of a shell's command line, and names as words of one.
namespace vxshow::cli::completion {

/// The word before the cursor.
struct TypedWord {
    std::string text;    ///< without quotes
    std::string raw;     ///< as typed
    char openQuote = 0;  ///< the quote that is not closed yet, or 0
    bool quoted = false; ///< whether a quote was opened and closed before
    /// How much of `raw` completion leaves alone: up to the last unquoted break character, or the
    /// open quote.
    std::size_t kept = 0;
};

struct TypedLine {
    std::vector<std::string> before; ///< the words before the cursor's, without quotes
    TypedWord word;
};

/// Splits a command line as bash does, but expands nothing. `breaks` are the characters after which
/// bash completes anew, its COMP_WORDBREAKS.
TypedLine splitLine(std::string_view line, std::string_view breaks);

/// What replaces the part of `word` that is not kept, so that the shell reads `text`. nullopt if
/// that cannot be expressed after what was typed. A word with a closed quote is not completed.
std::optional<std::string> replacement(TypedWord const & word, std::string_view text);

} // namespace vxshow::cli::completion
