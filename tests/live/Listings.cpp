#include "tests/live/Listings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <regex>
#include <sstream>
#include <thread>

namespace {

std::string inQuotes(std::string const & text) {
    return "'" + text + "'";
}

std::string arrayOf(Words const & words) {
    std::string text;
    for (std::string const & word : words) {
        text += (text.empty() ? "" : ", ") + inQuotes(word);
    }
    return "[" + text + "]";
}

Words partsOf(std::string const & text) {
    Words parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');) {
        parts.push_back(part);
    }
    return parts;
}

Process::Setting withoutFabric() {
    Process::Setting setting;
    setting.inChild = [] { unsetenv("VXSHOW_FABRIC"); };
    return setting;
}

std::string labelOf(Words const & words) {
    std::string text = "vxshow";
    for (std::string const & word : words) {
        text += " " + word;
    }
    return text;
}

Words cellsOf(std::string const & row) {
    std::istringstream stream(row);
    return {std::istream_iterator<std::string>(stream), {}};
}

bool isPrintable(std::string const & line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

} // namespace

Words operator+(Words words, Words const & more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

FabricText & FabricText::source(std::string const & kind, std::string const & name,
                                std::string const & access, std::string const & more) {
    text_ += "[[source]]\nkind = " + inQuotes(kind) + "\nname = " + inQuotes(name) + "\n" + access +
             "\n" + more + "\n";
    return *this;
}

FabricText & FabricText::database(std::string const & name, std::string const & remotes,
                                  std::string const & more) {
    return source("hardware_vtep", name, "remotes = " + arrayOf(partsOf(remotes)), more);
}

FabricText & FabricText::vtysh(std::string const & name, Words const & command,
                               std::string const & more) {
    return source("frr", name, "command = " + arrayOf(command), more);
}

std::vector<Words> const & listings() {
    static std::vector<Words> const all{
        {"mac", "received"}, {"mac", "advertised"}, {"arp", "received"},  {"arp", "advertised"},
        {"router", "map"},   {"router", "detail"},  {"router", "routes"},
    };
    return all;
}

Finished ask(Words const & words) {
    return runVxshow(words, withoutFabric());
}

std::string shown(Words const & words) {
    auto const finished = ask(words);
    EXPECT_EQ(finished.status, 0) << labelOf(words);
    EXPECT_EQ(finished.err, "") << labelOf(words);
    return finished.out;
}

void expectSameListings(Words const & live, std::string const & state) {
    std::vector<Words> const forms{{}, {"--json"}, {"--pretty", "--dotted", "--revision", "1"}};
    for (Words const & listing : listings()) {
        for (Words const & form : forms) {
            auto const expected = shown(Words{"--state", state} + form + listing);
            EXPECT_EQ(shown(live + form + listing), expected) << labelOf(form + listing);
        }
    }
}

std::string expectedSnapshot(Folder const & folder, std::string const & fabric) {
    return folder.write("expected.json", outputOf({liveProgram("expected_snapshot"), fabric}));
}

std::vector<Remark> failuresOf(Finished const & finished) {
    std::vector<Remark> failures;
    static std::regex const form("vxshow: (.*?): ((unreachable|no such schema|time limit|"
                                 "broken answer|permission|no such program).*)");
    for (std::string const & line : linesOf(finished.err)) {
        EXPECT_TRUE(isPrintable(line)) << line;
        std::smatch parts;
        EXPECT_TRUE(std::regex_match(line, parts, form)) << line;
        if (!parts.empty()) {
            failures.push_back({parts[1], parts[2]});
        }
    }
    EXPECT_TRUE(finished.err.empty() || finished.err.back() == '\n');
    return failures;
}

std::string warningOf(Finished const & finished, std::string const & name) {
    auto const lines = linesOf(finished.err);
    EXPECT_EQ(lines.size(), 1U) << finished.err;
    auto const start = "vxshow: " + name + ": ";
    if (lines.empty() || !lines[0].starts_with(start)) {
        ADD_FAILURE() << finished.err;
        return {};
    }
    EXPECT_TRUE(isPrintable(lines[0])) << lines[0];
    return lines[0].substr(start.size());
}

void expectNothingShown(Finished const & finished, std::string const & name,
                        std::string const & reason) {
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    auto const failures = failuresOf(finished);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].source, name);
    EXPECT_TRUE(failures[0].text.starts_with(reason)) << failures[0].text;
}

Words rowsOf(std::string const & listing) {
    static std::regex const mac("(^|.* )[0-9a-f]{4}\\.[0-9a-f]{4}\\.[0-9a-f]{4} .*");
    Words rows;
    bool within = false;
    for (std::string const & line : linesOf(listing)) {
        if (std::regex_match(line, mac)) {
            rows.push_back(line);
            within = true;
        } else if (within && line.starts_with("    ")) {
            rows.back() += "\n" + line;
        } else {
            within = false;
        }
    }
    return rows;
}

Words rowsWith(Words const & rows, std::string const & cell) {
    Words found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found), [&](std::string const & row) {
        auto const cells = cellsOf(row);
        return std::find(cells.begin(), cells.end(), cell) != cells.end();
    });
    return found;
}

Words rowsOfVni(Words const & rows, std::string const & vni) {
    Words found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found), [&](std::string const & row) {
        auto const cells = cellsOf(row);
        return cells.at(0) == vni || cells.at(1) == vni;
    });
    return found;
}

void waitUntil(std::string const & what, std::function<bool()> const & condition) {
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "gave up waiting for " << what;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}
