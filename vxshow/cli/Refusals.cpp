#include "vxshow/cli/Refusals.h"

#include "Vex/Errors.h"

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

/// The command `word` of `app`, or `app` itself if it has no such command.
CLI::App const * commandBelow(CLI::App const & app, std::string_view word) {
    auto const found =
        app.get_subcommands([&](CLI::App const * below) { return below->get_name() == word; });
    return found.empty() ? &app : found.front();
}

/// "vxshow mac received", or just the program if no command was typed.
std::string commandWords(CLI::App const & app) {
    return app.get_parent() ? commandWords(*app.get_parent()).append(" ").append(app.get_name())
                            : app.get_name();
}

/// The last word of the command that was typed.
CLI::App const & typedCommand(CLI::App const & app) {
    auto const typed = app.get_subcommands();
    return typed.empty() ? app : typedCommand(*typed.front());
}

std::string wordsThatFollow(CLI::App const & command) {
    std::string words;
    for (auto const * below : command.get_subcommands([](CLI::App const *) { return true; })) {
        words += (words.empty() ? "" : " or ") + below->get_name();
    }
    return words;
}

} // namespace

std::optional<std::string> missingValue(CLI::App const & app, int argc, char const * const * argv) {
    CLI::App const * typed = &app;        // the command typed so far
    CLI::Option const * listed = nullptr; // the last option, if it takes several values
    for (int i = 1; i < argc; ++i) {
        std::string_view const argument = argv[i];
        if (!argument.starts_with("--")) {
            // The library would split a list in brackets by its own rules.
            if (listed && argument.starts_with("[")) {
                return "--" + listed->get_lnames().front() + ": " + Vex::quoted(argument) +
                       ": expected " + listed->get_type_name();
            }
            typed = commandBelow(*typed, argument);
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

std::string refusal(CLI::App const & app, CLI::ParseError const & error) {
    auto const & command = typedCommand(app);
    auto const follow = wordsThatFollow(command);
    auto const rest = app.remaining(true);
    bool const noCommand = dynamic_cast<CLI::RequiredError const *>(&error) != nullptr;
    bool const unknownWord = dynamic_cast<CLI::ExtrasError const *>(&error) != nullptr;
    if (!follow.empty() && (noCommand || unknownWord)) {
        return (rest.empty() ? "no command" : std::string(Vex::quoted(rest.front()))) +
               ": expected " + follow + " after " + commandWords(command);
    }
    if (unknownWord && !rest.empty()) {
        return Vex::quoted(rest.front()) + ": not expected here; see '" + commandWords(command) +
               " --help'";
    }
    if (dynamic_cast<CLI::ArgumentMismatch const *>(&error) != nullptr) {
        // All that is useful in the message is the option's name, before the colon.
        std::string_view const message = error.what();
        return Vex::printable(message.substr(0, message.find(':'))) + ": given more than once";
    }
    return Vex::printable(error.what());
}

} // namespace vxshow::cli
