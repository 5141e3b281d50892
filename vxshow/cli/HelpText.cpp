#include "vxshow/cli/HelpText.h"

#include <CLI/Option.hpp>

#include <algorithm>

namespace vxshow::cli {

namespace {

constexpr std::size_t margin = 2;         // of a name, and between it and its text
constexpr std::size_t widestNames = 24;   // a longer name has its text on the next line
constexpr std::size_t narrowestText = 20; // narrower terminals break the lines themselves
constexpr char const * otherGroup = "Options";

/// A name and the text that explains it.
struct Entry {
    std::string name;
    std::string text;
};

std::string entryLines(std::vector<Entry> const & entries, std::size_t columns) {
    std::size_t names = 0;
    for (Entry const & entry : entries) {
        names = entry.name.size() > widestNames ? names : std::max(names, entry.name.size());
    }
    std::size_t const indent = margin + names + margin;
    std::string lines;
    for (auto const & [name, text] : entries) {
        lines.append(margin, ' ').append(name);
        if (name.size() > names) {
            lines.append("\n").append(indent, ' ');
        } else {
            lines.append(indent - margin - name.size(), ' ');
        }
        lines.append(wrapped(text, indent, std::max(columns, indent + narrowestText))).append("\n");
    }
    return lines;
}

std::string section(std::string const & title, std::vector<Entry> const & entries,
                    std::size_t columns) {
    return entries.empty() ? "" : "\n" + title + ":\n" + entryLines(entries, columns);
}

/// "--vni VNI", "-h,--help", or "FILE" for an argument.
Entry entryOf(CLI::Option const & option) {
    std::string name =
        option.get_positional() ? option.get_name(true) : option.get_name(false, true);
    if (option.nonpositional() && option.get_type_size() != 0 && !option.get_type_name().empty()) {
        name += " " + option.get_type_name();
    }
    return {name, option.get_description()};
}

std::vector<Entry> optionsOf(CLI::App const & app, std::string const & group) {
    std::vector<Entry> entries;
    for (auto const * option : app.get_options()) {
        if (option->nonpositional() && option->get_group() == group) {
            entries.push_back(entryOf(*option));
        }
    }
    return entries;
}

std::vector<Entry> argumentsOf(CLI::App const & app) {
    std::vector<Entry> entries;
    for (auto const * option : app.get_options()) {
        if (option->get_positional()) {
            entries.push_back(entryOf(*option));
        }
    }
    return entries;
}

std::vector<Entry> commandsOf(CLI::App const & app) {
    std::vector<Entry> entries;
    for (LeafCommand const & leaf : leafCommands(app)) {
        entries.push_back({leaf.words, leaf.command->get_description()});
    }
    return entries;
}

std::string usageLine(CLI::App const & app, std::string const & name) {
    std::string line = "Usage: " + name + " [OPTIONS]";
    for (auto const * option : app.get_options()) {
        if (option->get_positional()) {
            line += option->get_required() ? " " + option->get_name(true)
                                           : " [" + option->get_name(true) + "]";
        }
    }
    if (!leafCommands(app).empty()) {
        line += " COMMAND [FILTERS]";
    }
    return line + "\n";
}

void addLeafCommands(CLI::App const & app, std::string const & before,
                     std::vector<LeafCommand> & into) {
    for (auto const * below :
         app.get_subcommands([](CLI::App const * command) { return isListed(*command); })) {
        std::string const words = before + below->get_name();
        std::size_t const known = into.size();
        addLeafCommands(*below, words + " ", into);
        if (into.size() == known) {
            into.push_back({words, below});
        }
    }
}

} // namespace

std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns) {
    std::size_t const room = columns > indent ? columns - indent : 1;
    std::string lines;
    std::size_t used = 0;
    auto const startLine = [&] {
        lines.append("\n").append(indent, ' ');
        used = 0;
    };
    while (!text.empty()) {
        auto const end = std::min(text.find_first_of(" \n"), text.size());
        auto const word = text.substr(0, end);
        if (used > 0 && used + 1 + word.size() > room) {
            startLine();
        }
        if (!word.empty()) {
            lines.append(used > 0 ? " " : "").append(word);
            used += word.size() + (used > 0 ? 1 : 0);
        }
        bool const isBreak = end < text.size() && text[end] == '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
        if (isBreak && !text.empty()) {
            startLine();
        }
    }
    return lines;
}

bool isListed(CLI::App const & command) {
    return !command.get_group().empty();
}

std::vector<LeafCommand> leafCommands(CLI::App const & app) {
    std::vector<LeafCommand> leaves;
    addLeafCommands(app, "", leaves);
    return leaves;
}

CLI::App const * commandNamed(CLI::App const & app, std::string_view word) {
    auto const found =
        app.get_subcommands([&](CLI::App const * below) { return below->get_name() == word; });
    return found.empty() ? nullptr : found.front();
}

std::string commandWords(CLI::App const & app) {
    return app.get_parent() ? commandWords(*app.get_parent()).append(" ").append(app.get_name())
                            : app.get_name();
}

std::string shortUsage(CLI::App const & app, std::size_t columns) {
    return usageLine(app, app.get_name()) + section("Commands", commandsOf(app), columns) + "\n" +
           wrapped("'vxshow help COMMAND' describes a command, 'vxshow --help' lists all options.",
                   0, columns) +
           "\n";
}

std::string HelpFormatter::make_help(CLI::App const * app, std::string name,
                                     CLI::AppFormatMode /* mode */) const {
    std::string help = wrapped(app->get_description(), 0, columns_) + "\n" + usageLine(*app, name) +
                       section("Arguments", argumentsOf(*app), columns_) +
                       section("Commands", commandsOf(*app), columns_);
    for (std::string const & group : app->get_groups()) {
        if (group != otherGroup) {
            help += section(group, optionsOf(*app, group), columns_);
        }
    }
    help += section(otherGroup, optionsOf(*app, otherGroup), columns_);
    if (app->get_parent()) {
        return help + "\n" +
               wrapped(
                   "Options shared by all commands (--state, --fabric, --json and so on) can be "
                   "given before or after the command; vxshow --help lists them.",
                   0, columns_) +
               "\n";
    }
    // Examples are not wrapped: they are there to be copied.
    return help + "\n" + app->get_footer();
}

} // namespace vxshow::cli
