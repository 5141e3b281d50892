#include "vxshow/cli/completion/Candidates.h"

#include "vxshow/cli/FilterOptions.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/cli/Refusals.h"
#include "vxshow/cli/completion/TypedWords.h"
#include "vxshow/terminal/ShownCharacter.h"

#include <algorithm>
#include <set>

namespace vxshow::cli::completion {

namespace {

/// False if the name has a character that a terminal does not show as it is. Such a name is not
/// completed, since the user could not see what was inserted.
bool isShownWhole(std::string_view name) {
    while (!name.empty()) {
        auto const first = terminal::firstCharacter(name);
        if (first.shown != name.substr(0, first.length)) {
            return false;
        }
        name.remove_prefix(first.length);
    }
    return true;
}

/// The first sentence or clause, "Snapshot to read".
std::string shortDescription(std::string const & text) {
    std::size_t end = text.find('\n');
    for (char const * const mark : {"; ", ": ", ". ", " (", ", with "}) {
        end = std::min(end, text.find(mark));
    }
    return text.substr(0, end);
}

class Collecting {
public:
    explicit Collecting(std::string_view typed) : typed_(typed) {}

    /// A command has its own --help, as the program does: each word is offered once.
    void add(std::string const & text, std::string const & description) {
        if (text.starts_with(typed_) && !text.empty() && isShownWhole(text) &&
            known_.insert(text).second) {
            result_.candidates.push_back({text, shortDescription(description)});
        }
    }

    void addCommands(CLI::App & app) {
        for (auto * below : app.get_subcommands([](CLI::App *) { return true; })) {
            add(below->get_name(), below->get_description());
        }
    }

    /// The options of `app` and of those above it, but those that would be refused now.
    void addOptions(CLI::App & app, TypedWords const & typed) {
        for (auto * command = &app; command; command = command->get_parent()) {
            for (auto * option : command->get_options([](CLI::Option *) { return true; })) {
                if (!option->nonpositional() || typed.refuses(*option)) {
                    continue;
                }
                for (std::string const & name : option->get_lnames()) {
                    add("--" + name, option->get_description());
                }
                // A short name is worth a line only if it was begun.
                for (std::string const & name : option->get_snames()) {
                    if (!typed_.empty()) {
                        add("-" + name, option->get_description());
                    }
                }
            }
        }
    }

    /// Values that are only text: after `before`, which is a part of the word.
    void addValues(std::vector<std::string> const & values, std::string const & before) {
        for (std::string const & value : values) {
            add(before + value, "");
        }
    }

    void expect(Expected expected) { result_.expected = expected; }

    Completion result() && { return std::move(result_); }

private:
    std::string_view typed_;
    std::set<std::string> known_;
    Completion result_;
};

/// A name as a value of a filter. In a list, commas and patterns have a meaning; elsewhere
/// `name:TEXT` has none.
std::string filterValue(std::string const & name, std::vector<std::string> const & words,
                        bool isInList) {
    bool const isSpecial = name.find_first_of(",*?") != std::string::npos ||
                           name.starts_with("name:") ||
                           std::find(words.begin(), words.end(), name) != words.end();
    if (!isSpecial) {
        return name;
    }
    return isInList ? "" : "name:" + name;
}

/// Values of `option`; `start` is what was typed of the value, `before` the part of the word that
/// precedes it.
void addValuesOf(CLI::Option & option, std::string const & before, std::string_view start,
                 TypedWords const & typed, NamesOf const & namesOf, Collecting & into) {
    std::string const type =
        option.get_positional() ? option.get_name(true) : option.get_type_name();
    if (type == "FILE" || type == "DIR") {
        return into.expect(type == "FILE" ? Expected::files : Expected::directories);
    }
    auto const words = declaredValues(option);
    if (option.check_lname(fabricNameOption)) {
        return into.addValues(namesOf(std::string("--") + fabricNameOption, typed.stateOptions()),
                              before);
    }
    if (option.get_group() != filterGroup) {
        return into.addValues(words, before);
    }
    auto const comma = start.starts_with("name:") ? std::string_view::npos : start.rfind(',');
    bool const isInList = comma != std::string_view::npos;
    std::string const list(start.substr(0, isInList ? comma + 1 : 0));
    std::string const kept = before + list;
    auto const isListed = [&](std::string const & value) {
        return ("," + list).find("," + value + ",") != std::string::npos;
    };
    for (std::string const & word : words) {
        if (!isListed(word)) {
            into.add(kept + word, "");
        }
    }
    for (std::string const & name :
         namesOf("--" + option.get_lnames().front(), typed.stateOptions())) {
        std::string const value = filterValue(name, words, isInList);
        // At its start, a bracket or a dash has a meaning on the command line.
        bool const isMisread = value.starts_with("[") || (before.empty() && value.starts_with("-"));
        if (!value.empty() && !isMisread && !isListed(value)) {
            into.add(kept + value, "");
        }
    }
}

Completion completeHelp(CLI::App & app, std::vector<std::string> const & words) {
    CLI::App * command = &app;
    for (std::size_t i = 1; command && i + 1 < words.size(); ++i) {
        command = commandBelow(*command, words[i]);
    }
    Collecting found(words.back());
    if (command) {
        found.addCommands(*command);
    }
    return std::move(found).result();
}

} // namespace

Completion complete(CLI::App & app, std::vector<std::string> const & words,
                    NamesOf const & namesOf) {
    if (words.size() > 1 && words.front() == helpCommand) {
        return completeHelp(app, words);
    }
    std::string const & last = words.back();
    TypedWords const typed(app, {words.begin(), words.end() - 1});
    Collecting found(last);
    if (auto * option = typed.awaitsValue()) {
        addValuesOf(*option, "", last, typed, namesOf, found);
        return std::move(found).result();
    }
    if (last.starts_with("-")) {
        auto const sign = last.find('=');
        if (sign == std::string::npos) {
            found.addOptions(typed.command(), typed);
        } else if (auto * option = typed.optionNamed(last.substr(0, sign))) {
            addValuesOf(*option, last.substr(0, sign + 1), std::string_view(last).substr(sign + 1),
                        typed, namesOf, found);
        }
        return std::move(found).result();
    }
    found.addCommands(typed.command());
    if (words.size() == 1) {
        found.add(std::string(helpCommand), "Describe the program or a command");
    }
    if (auto * option = typed.takesMore()) {
        addValuesOf(*option, "", last, typed, namesOf, found);
    } else if (auto * argument = typed.nextArgument()) {
        addValuesOf(*argument, "", last, typed, namesOf, found);
    }
    return std::move(found).result();
}

} // namespace vxshow::cli::completion
