#pragma once

#include "tests/live/Command.h"

#include <functional>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

Words operator+(Words words, Words const & more);

/// The text of a fabric file, source by source.
class FabricText {
public:
    /// `remotes` are separated by commas; `more` has further lines of its table.
    FabricText & database(std::string const & name, std::string const & remotes,
                          std::string const & more = {});

    /// `command` are the words that run vtysh.
    FabricText & vtysh(std::string const & name, Words const & command,
                       std::string const & more = {});

    std::string const & text() const noexcept { return text_; }

private:
    FabricText & source(std::string const & kind, std::string const & name,
                        std::string const & access, std::string const & more);

    std::string text_;
};

/// The seven show commands.
std::vector<Words> const & listings();

/// Runs vxshow without a state or fabric in its environment.
Finished ask(Words const & words);

/// Expects vxshow to succeed with nothing on standard error; returns what it printed.
std::string shown(Words const & words);

/// Expects all seven commands, in text and JSON, to print the same bytes for the live sources
/// that the options `live` name and for the snapshot in the file `state`.
void expectSameListings(Words const & live, std::string const & state);

/// The snapshot of a fabric, computed without vxshow, as a file in `folder`.
std::string expectedSnapshot(Folder const & folder, std::string const & fabric);

/// A line about a source on standard error.
struct Remark {
    std::string source;
    std::string text;
};

/// Expects each line of standard error to be `vxshow: NAME: REASON`, in printable ASCII, where
/// the reason begins with one of those for which a source cannot be read.
std::vector<Remark> failuresOf(Finished const & finished);

/// Expects a single line on standard error, `vxshow: NAME: TEXT` in printable ASCII, and returns
/// the text.
std::string warningOf(Finished const & finished, std::string const & name);

/// Expects nothing to be shown, and a single line that reports the failure of `name` with a reason
/// that begins with `reason`.
void expectNothingShown(Finished const & finished, std::string const & name,
                        std::string const & reason);

/// The rows of a listing of MAC addresses or ARP entries: the lines with a MAC address, each with
/// its continuation lines.
Words rowsOf(std::string const & listing);

/// The rows that have `cell` in one of their columns.
Words rowsWith(Words const & rows, std::string const & cell);

/// The rows of a VNI, which is the first column, or the second one after a name.
Words rowsOfVni(Words const & rows, std::string const & vni);

/// Waits until the condition holds; fails the test after a minute.
void waitUntil(std::string const & what, std::function<bool()> const & condition);
