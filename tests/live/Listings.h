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
    /// `remotes` are separated by commas; `more` are further lines of its table.
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

/// The seven commands that list.
std::vector<Words> const & listings();

/// Runs vxshow without a state or fabric in its environment.
Finished ask(Words const & words);

/// Expects vxshow to succeed without a word on standard error; gives what it printed.
std::string shown(Words const & words);

/// Expects all seven commands, in text and JSON, to print the same bytes of the live sources
/// that the options `live` name and of the snapshot in the file `state`.
void expectSameListings(Words const & live, std::string const & state);

/// The snapshot of a fabric, worked out without vxshow, as a file in `folder`.
std::string expectedSnapshot(Folder const & folder, std::string const & fabric);

/// What is said of a source on standard error.
struct Remark {
    std::string source;
    std::string text;
};

/// Expects each line of standard error to be `vxshow: NAME: REASON`, in printable ASCII, with a
/// reason that begins as one of those for which a source cannot be read.
std::vector<Remark> failuresOf(Finished const & finished);

/// Expects one line on standard error, `vxshow: NAME: TEXT` in printable ASCII, and none of a
/// source that cannot be read; gives the text.
std::string warningOf(Finished const & finished, std::string const & name);

/// Expects that no source was read and nothing shown, and one line that says so of `name`, with
/// a reason that begins with `reason`.
void expectNothingShown(Finished const & finished, std::string const & name,
                        std::string const & reason);

/// The rows of listings of MAC addresses or ARP entries, each with the lines that go on with it:
/// lines in which a MAC address stands.
Words rowsOf(std::string const & listing);

/// Those rows in which `cell` is one of the columns.
Words rowsWith(Words const & rows, std::string const & cell);

/// Those rows that are of a VNI: it is the first column, or the second behind a name.
Words rowsOfVni(Words const & rows, std::string const & vni);

/// Waits until it holds; fails the test after a minute.
void waitUntil(std::string const & what, std::function<bool()> const & holds);
