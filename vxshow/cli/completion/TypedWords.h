#pragma once

#include "vxshow/cli/StateOptions.h"

#include <CLI/App.hpp>

#include <map>
#include <string>
#include <vector>

namespace vxshow::cli::completion {

/// The command `word` of `app`, or null.
CLI::App * commandBelow(CLI::App & app, std::string const & word);

/// The words of an unfinished command line, read as far as they go: they need not be valid. The
/// parser cannot do it, since it ends at the first mistake, and something is always missing yet.
class TypedWords {
public:
    /// `app` must outlive this.
    TypedWords(CLI::App & app, std::vector<std::string> const & words);

    /// The command as far as it was typed.
    CLI::App & command() const noexcept { return *command_; }

    /// The option whose value must come next; null if none does.
    CLI::Option * awaitsValue() const noexcept { return awaiting_; }

    /// The option that can take another value; null if none does.
    CLI::Option * takesMore() const noexcept { return listed_; }

    /// The argument of the command that comes next; null if there is none.
    CLI::Option * nextArgument() const;

    /// The option "--name" or "-n" of the command or of those above it, or null.
    CLI::Option * optionNamed(std::string const & name) const;

    /// Whether the option cannot be given now: it was given and is not repeatable, or excludes
    /// another one that was.
    bool refuses(CLI::Option const & option) const;

    /// Where the state is, as far as it was typed. Values are not checked. A `~/` is expanded as
    /// the shell would.
    StateOptions stateOptions() const;

private:
    using Given = std::map<CLI::Option const *, std::vector<std::string>>;

    void readOption(std::string const & word);
    std::vector<std::string> const & valuesOf(char const * name) const;

    CLI::App * app_;
    CLI::App * command_;
    CLI::Option * awaiting_ = nullptr;
    CLI::Option * listed_ = nullptr;
    std::size_t arguments_ = 0;
    Given given_;
};

} // namespace vxshow::cli::completion
