#pragma once

#include <string>
#include <utility>
#include <vector>

/// How `vxshow` answers: each function runs it, expects one kind of answer in the form that
/// is promised for that kind, and gives its text.

/// Expects `arguments` to succeed on the state `snapshot` without a word on standard error.
/// Gives what it printed.
std::string answer(std::string const & snapshot, std::vector<std::string> arguments);

/// Expects `arguments` to fail on the state `snapshot`: exit 1, one line of printable ASCII
/// that starts with the program's name, no output. Gives the rest of the line.
std::string failure(std::string const & snapshot, std::vector<std::string> arguments);

/// Expects the command line to be refused before any state is read: exit 2, and the rest as
/// of a failure.
std::string refused(std::vector<std::string> const & arguments);

/// A whole document with the one member `name`.
std::string snapshotWith(std::string const & name, std::string const & state);

/// The snapshot that ships as an example.
std::string exampleFabric();

/// One command, put to one state under several filters.
class Asked {
public:
    /// `words` are the command's, "mac", "advertised".
    Asked(std::vector<std::string> words, std::string snapshot)
        : words_(std::move(words)), snapshot_(std::move(snapshot)) {}

    /// As `answer`, of the command with these filters.
    std::string listing(std::vector<std::string> const & filters) const;

    /// As `refused`, of the command with these filters.
    std::string refusedFilter(std::vector<std::string> const & filters) const;

    /// Expects that each of `options` is none of the command's.
    void knowsNone(std::vector<std::string> const & options) const;

private:
    std::vector<std::string> with(std::vector<std::string> const & filters) const;

    std::vector<std::string> words_;
    std::string snapshot_;
};
