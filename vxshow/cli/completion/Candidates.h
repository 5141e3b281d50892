#pragma once

#include "vxshow/cli/StateOptions.h"

#include <CLI/App.hpp>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What can follow on a command line. Everything comes from the command tree that the program
/// parses with, so that an option which is added there is completed as well.
namespace vxshow::cli::completion {

struct Candidate {
    std::string text;        ///< the whole word, without quotes
    std::string description; ///< one line, or empty
};

enum class Expected { words, files, directories };

struct Completion {
    Expected expected = Expected::words;
    /// Of words: each begins with what was typed and has no control character.
    std::vector<Candidate> candidates = {};
};

/// Returns names in the state that `options` describe, for the filter `option`, "--source". They
/// need not be what was typed. Called at most once for a command line.
using NamesOf = std::function<std::vector<std::string>(std::string const & option,
                                                       StateOptions const & options)>;

/// What the last of `words` can be. The words come without the program's name and without quotes;
/// the last one is empty if a new word is to start. `app` is the program with all its commands.
/// Words that the program would refuse are skipped.
Completion complete(CLI::App & app, std::vector<std::string> const & words,
                    NamesOf const & namesOf);

} // namespace vxshow::cli::completion
