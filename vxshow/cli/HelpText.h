#pragma once

#include <CLI/App.hpp>
#include <CLI/FormatterFwd.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The help of the program and of each command, wrapped by words.
namespace vxshow::cli {

/// The words of `text`, each line at most `columns` long unless a single word is longer. Lines
/// after the first begin with `indent` blanks, and the first one is that many columns shorter, too.
/// A line break in the text stays.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t columns);

/// A command with its words below the program, "mac received". It has no commands below it.
struct LeafCommand {
    std::string words;
    CLI::App const * command;
};

/// Whether the command is in lists of commands.
bool isListed(CLI::App const & command);

/// The listed commands below `app`, in the order in which they were added.
std::vector<LeafCommand> leafCommands(CLI::App const & app);

/// The command `word` of `app`, or null.
CLI::App const * commandNamed(CLI::App const & app, std::string_view word);

/// "vxshow mac received", or just the program.
std::string commandWords(CLI::App const & app);

/// Which commands there are, in few lines of at most `columns`: for someone who typed none.
std::string shortUsage(CLI::App const & app, std::size_t columns);

/// Prints help with options by group, and all commands with all words.
class HelpFormatter : public CLI::FormatterBase {
public:
    /// Sets how long a line can be; 80 columns if this is not called.
    void columnsAre(std::size_t columns) noexcept { columns_ = columns; }

    std::string make_help(CLI::App const * app, std::string name,
                          CLI::AppFormatMode mode) const override;

private:
    std::size_t columns_ = 80;
};

} // namespace vxshow::cli
