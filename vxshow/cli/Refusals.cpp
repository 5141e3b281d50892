#include "vxshow/cli/Refusals.h"

#include "Vex/Errors.h"
#include "vxshow/cli/FilterOptions.h"
#include "vxshow/cli/HelpText.h"
#include "vxshow/text/Similar.h"

#include <string_view>
#include <vector>

namespace vxshow::cli {

namespace {

/// The option of this name, of `app` or of any command below it; null if there is none.
CLI::Option const * findOption(CLI::App const & app, std::string const & name) {
    if (auto const * option = app.get_option_no_throw(name)) {
        return option;
    }
    for (auto const * command : app.get_subcommands([](CLI::App const *) { return true; })) {
        if (auto const * option = findOption(*command, name)) {
            return option;
        }
    }
    return nullptr;
}

/// The last word of the command that was typed.
CLI::App const & typedCommand(CLI::App const & app) {
    auto const typed = app.get_subcommands();
    return typed.empty() ? app : typedCommand(*typed.front());
}

std::string wordsThatFollow(CLI::App const & command) {
    std::string words;
    for (auto const * below :
         command.get_subcommands([](CLI::App const * one) { return isListed(*one); })) {
        words += (words.empty() ? "" : " or ") + below->get_name();
    }
    return words;
}

std::string didYouMean(std::string_view typed, std::vector<std::string_view> const & candidates) {
    auto const similar = text::mostSimilar(typed, candidates);
    return similar ? "; did you mean " + std::string(*similar) + "?" : "";
}

/// The options of `command` and of those above it, which take theirs as well.
std::vector<std::string> optionNames(CLI::App const & command) {
    std::vector<std::string> names;
    for (auto const * app = &command; app; app = app->get_parent()) {
        for (auto const * option : app->get_options()) {
            for (std::string const & name : option->get_lnames()) {
                names.push_back("--" + name);
            }
        }
    }
    return names;
}

/// The line for an option that a command has, but that stands before its words; nullopt if no
/// command has it. `typed` is the command that was typed.
std::optional<std::string> misplacedFilter(CLI::App const & typed, std::string const & name) {
    auto const line = [&](CLI::App const & command, CLI::Option const & option) {
        auto const type = option.get_type_name();
        return Vex::quoted(name) +
               (option.get_group() == filterGroup ? ": a filter" : ": this option") +
               " stands after its command: " + commandWords(command) + " " + name +
               (type.empty() ? "" : " " + type);
    };
    auto const leaves = leafCommands(typed);
    if (leaves.empty()) {
        auto const * option = typed.get_option_no_throw(name);
        return option ? std::optional(line(typed, *option)) : std::nullopt;
    }
    for (LeafCommand const & leaf : leaves) {
        if (auto const * option = leaf.command->get_option_no_throw(name)) {
            return line(*leaf.command, *option);
        }
    }
    return std::nullopt;
}

CLI::App const & programOf(CLI::App const & command) {
    return command.get_parent() ? programOf(*command.get_parent()) : command;
}

std::string unknownOption(CLI::App const & command, std::string const & typed) {
    auto const name = typed.substr(0, typed.find('='));
    if (auto const misplaced = misplacedFilter(command, name)) {
        return *misplaced;
    }
    auto const names = optionNames(command);
    // The option of another command is not misspelt.
    bool const isKnown = findOption(programOf(command), name) != nullptr;
    auto const meant = isKnown ? "" : didYouMean(name, {names.begin(), names.end()});
    return Vex::quoted(typed) + ": not expected here" +
           (meant.empty() ? "; see '" + commandWords(command) + " --help'" : meant);
}

} // namespace

std::optional<std::string> missingValue(CLI::App const & app, int argc, char const * const * argv) {
    CLI::App const * typed = &app;        // the command typed so far
    CLI::Option const * listed = nullptr; // the last option, if it takes several values
    for (int i = 1; i < argc; ++i) {
        std::string_view const argument = argv[i];
        if (!argument.starts_with("--") && argument != "-o" && argument != "-F") {
            // The library would split a list in brackets by its own rules.
            if (listed && argument.starts_with("[")) {
                return "--" + listed->get_lnames().front() + ": " + Vex::quoted(argument) +
                       ": expected " + listed->get_type_name();
            }
            auto const * const below = commandNamed(*typed, argument);
            typed = below ? below : typed;
            continue;
        }
        std::size_t const sign = argument.find('=');
        std::string const name(argument.substr(0, sign));
        // Several commands can have an option of this name; the command before it decides.
        auto const * ofTyped = findOption(*typed, name);
        auto const * option = ofTyped ? ofTyped : findOption(app, name);
        listed = option && option->get_items_expected_max() > 1 ? option : nullptr;
        if (!option || option->get_items_expected_min() == 0) {
            continue;
        }
        std::string_view const next = i + 1 < argc ? argv[i + 1] : "--";
        bool const noValue =
            sign == std::string_view::npos ? next.starts_with("--") : sign + 1 == argument.size();
        if (noValue) {
            return name + ": no value; expected " + option->get_type_name();
        }
    }
    return std::nullopt;
}

std::string unknownWord(CLI::App const & app, std::string_view word) {
    auto const follow = wordsThatFollow(app);
    if (follow.empty()) {
        return Vex::quoted(word) + ": not expected after " + commandWords(app);
    }
    std::vector<std::string_view> candidates;
    auto const leaves = leafCommands(app);
    for (auto const * below : app.get_subcommands([](CLI::App const *) { return true; })) {
        candidates.push_back(below->get_name());
    }
    for (LeafCommand const & leaf : leaves) {
        candidates.push_back(leaf.words);
    }
    return Vex::quoted(word) + ": expected " + follow + " after " + commandWords(app) +
           didYouMean(word, candidates);
}

std::string refusal(CLI::App const & app, CLI::ParseError const & error) {
    auto const & command = typedCommand(app);
    auto const follow = wordsThatFollow(command);
    auto const rest = app.remaining(true);
    bool const noCommand = dynamic_cast<CLI::RequiredError const *>(&error) != nullptr;
    bool const hasExtras = dynamic_cast<CLI::ExtrasError const *>(&error) != nullptr;
    if (!follow.empty() && (noCommand || hasExtras)) {
        if (!rest.empty()) {
            return rest.front().starts_with("-") ? unknownOption(command, rest.front())
                                                 : unknownWord(command, rest.front());
        }
        return "no command: expected " + follow + " after " + commandWords(command);
    }
    if (hasExtras && !rest.empty()) {
        return unknownOption(command, rest.front());
    }
    if (dynamic_cast<CLI::ArgumentMismatch const *>(&error) != nullptr) {
        // All that is useful in the message is the option's name, before the colon.
        std::string_view const message = error.what();
        return Vex::printable(message.substr(0, message.find(':'))) + ": given more than once";
    }
    return Vex::printable(error.what());
}

} // namespace vxshow::cli
