#include "vxshow/cli/completion/Complete.h"

#include "vxshow/cli/CommandLine.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/completion/Candidates.h"
#include "vxshow/cli/completion/ProcessorTimeLimit.h"
#include "vxshow/cli/completion/ShellLine.h"
#include "vxshow/cli/completion/StateNames.h"
#include "vxshow/config/ReadSettings.h"

#include <exception>
#include <string_view>

namespace vxshow::cli::completion {

namespace {

constexpr std::string_view completeCommand = "complete";
constexpr std::chrono::milliseconds mostTime(150);

std::string headLine(Expected expected) {
    return expected == Expected::files         ? "files\n"
           : expected == Expected::directories ? "directories\n"
                                               : "words\n";
}

std::vector<std::string> fabricNames(config::Settings const & settings) {
    std::vector<std::string> names;
    for (config::NamedFabric const & fabric : settings.fabrics) {
        if (!fabric.isHidden) {
            names.push_back(fabric.name);
        }
    }
    return names;
}

/// Completes the last of `words`.
Completion completionOf(std::vector<std::string> const & words) {
    // The filters of a command can depend on the words before it.
    std::vector<char const *> arguments{"vxshow"};
    for (std::string const & word : words) {
        arguments.push_back(word.c_str());
    }
    CommandLine chosen;
    CLI::App app;
    describeCommandLine(app, chosen, static_cast<int>(arguments.size()) - 1, arguments.data(),
                        command::addCommands);
    return complete(app, words, [&](std::string const & option, StateOptions const & options) {
        auto const settings = config::readSettings();
        return option == std::string("--") + fabricNameOption
                   ? fabricNames(settings)
                   : namesInState(option, options, settings);
    });
}

std::string answerBash(std::string_view breaks, std::string_view line) {
    TypedLine typed = splitLine(line, breaks);
    if (typed.before.empty()) {
        return "";
    }
    std::vector<std::string> words(typed.before.begin() + 1, typed.before.end());
    words.push_back(typed.word.text);
    auto const completion = completionOf(words);
    std::string text = headLine(completion.expected);
    for (Candidate const & candidate : completion.candidates) {
        if (auto const word = replacement(typed.word, candidate.text)) {
            text.append(*word).append("\n");
        }
    }
    return text;
}

std::string answerWithDescriptions(std::vector<std::string> const & words) {
    auto const completion = completionOf(words);
    std::string text = headLine(completion.expected);
    for (Candidate const & candidate : completion.candidates) {
        text.append(candidate.text).append("\t").append(candidate.description).append("\n");
    }
    return text;
}

std::string answerTo(std::string_view shell, std::vector<std::string> words) {
    if (shell == "bash") {
        return words.size() == 2 ? answerBash(words[0], words[1]) : "";
    }
    if (words.size() < 2 || words.front() != "--") {
        return "";
    }
    words.erase(words.begin());
    if (shell == "fish") {
        // Blanks in a token are part of the word.
        auto const token = splitLine(words.back(), "");
        if (!words.back().empty() && !token.before.empty()) {
            return "";
        }
        words.back() = token.word.text;
    }
    return answerWithDescriptions(words);
}

} // namespace

bool isAsked(int argc, char const * const * argv) {
    if (argc < 3 || argv[1] != completeCommand) {
        return false;
    }
    std::string_view const shell = argv[2];
    return shell == "bash" || shell == "zsh" || shell == "fish";
}

std::string answer(int argc, char const * const * argv) {
    try {
        ProcessorTimeLimit const limit(mostTime);
        return answerTo(argv[2], {argv + 3, argv + argc});
    } catch (std::exception const &) {
        return ""; // there is nowhere to report it: the user is in the middle of a line
    }
}

} // namespace vxshow::cli::completion
