#pragma once

#include <string>
#include <utility>
#include <vector>

/// Each function runs `vxshow`, expects one kind of result in the form that is promised for it, and
/// returns its text.

/// Expects `arguments` to succeed on the state `snapshot` with nothing on standard error. Returns
/// the output.
std::string answer(std::string const & snapshot, std::vector<std::string> arguments);

/// A listing, and the line about a name in its filters.
struct UnknownName {
    std::string out;
    std::string line;
};

/// Expects `arguments` to list the state `snapshot` and to report, as `failure` does but with exit
/// status 4, a name that the state does not have.
UnknownName answerOfUnknownName(std::string const & snapshot, std::vector<std::string> arguments);

/// Expects `arguments` to fail on the state `snapshot`: exit 1, one line of printable ASCII
/// that starts with the program's name, no output. Returns the rest of the line.
std::string failure(std::string const & snapshot, std::vector<std::string> arguments);

/// Expects the command line to be refused before any state is read: exit 2, otherwise as for
/// `failure`.
std::string refused(std::vector<std::string> const & arguments);

/// A complete document with the single member `name`.
std::string snapshotWith(std::string const & name, std::string const & state);

/// The example snapshot of the distribution.
std::string exampleFabric();

/// One command, run on one state with various filters.
class Asked {
public:
    /// `words` are those of the command: "mac", "advertised".
    Asked(std::vector<std::string> words, std::string snapshot)
        : words_(std::move(words)), snapshot_(std::move(snapshot)) {}

    /// As `answer`, for the command with these filters.
    std::string listing(std::vector<std::string> const & filters) const;

    /// As `answerOfUnknownName`, for the command with these filters.
    UnknownName unknownName(std::vector<std::string> const & filters) const;

    /// As `refused`, for the command with these filters.
    std::string refusedFilter(std::vector<std::string> const & filters) const;

    /// Expects that the command has none of `options`.
    void knowsNone(std::vector<std::string> const & options) const;

private:
    std::vector<std::string> with(std::vector<std::string> const & filters) const;

    std::vector<std::string> words_;
    std::string snapshot_;
};
