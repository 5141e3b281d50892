#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Words = std::vector<std::string>;

/// The first words of the lines with which the program answers a script for zsh.
Words completed(Words typed, Process::Setting const & setting = {}) {
    typed.insert(typed.begin(), {"complete", "zsh", "--"});
    Process process(typed, setting);
    Finished const finished = process.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    std::istringstream lines(finished.out);
    Words words;
    for (std::string line; std::getline(lines, line);) {
        words.push_back(line.substr(0, line.find('\t')));
    }
    return words;
}

Words words(Words list) {
    list.insert(list.begin(), "words");
    return list;
}

bool contains(Words const & words, std::string const & word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

Words ofExample(Words typed) {
    typed.insert(typed.begin(), {"--state", EXAMPLE_FABRIC});
    return completed(typed);
}

/// A snapshot of switches with these names, which are JSON without the quotes.
std::string stateOfSwitches(Words const & names) {
    std::string switches;
    for (std::string const & name : names) {
        switches += (switches.empty() ? "\"" : ",\"") + name + R"(":{"10":{}})";
    }
    return R"({"format":"vxlan-controller-state","version":1,"received":{"switches":{)" + switches +
           "}}}";
}

} // namespace

TEST(Complete, TheWordsOfCommands) {
    EXPECT_EQ(completed({"mac", ""}), words({"received", "advertised"}));
    EXPECT_EQ(completed({"router", "r"}), words({"routes"}));
    EXPECT_EQ(completed({"--json", "he"}), words({}));
    EXPECT_EQ(completed({"he"}), words({"help"}));
    EXPECT_EQ(completed({"help", "arp", ""}), words({"received", "advertised"}));
    EXPECT_EQ(completed({"nonsense", "--nonsense", "ma"}), words({"mac"}));
}

TEST(Complete, TheHiddenCommandIsInNoList) {
    EXPECT_FALSE(contains(completed({""}), "complete"));
    EXPECT_EQ(runVxshow({"--help"}).out.find("  complete "), std::string::npos);
}

TEST(Complete, EveryOptionOfHelpOnce) {
    auto const offered = completed({"mac", "received", "--"});
    for (Words const & command : {Words{"mac", "received", "--help"}, Words{"--help"}}) {
        std::istringstream help(runVxshow(command).out);
        for (std::string line; std::getline(help, line);) {
            auto const start = line.find("--");
            if (start == std::string::npos || start > 5 || line[0] != ' ') {
                continue;
            }
            auto const name = line.substr(start, line.find_first_of(" ", start) - start);
            EXPECT_EQ(std::count(offered.begin(), offered.end(), name), 1) << name;
        }
    }
    EXPECT_TRUE(contains(offered, "--vni"));
    EXPECT_TRUE(contains(offered, "--state"));
    EXPECT_FALSE(contains(offered, "--prefix"));
}

TEST(Complete, AnOptionThatWouldBeRefusedIsLeftOut) {
    EXPECT_EQ(completed({"--json", "--pr"}), words({}));
    EXPECT_EQ(completed({"--state", "x", "--sta"}), words({}));
    EXPECT_EQ(completed({"--ovsdb", "unix:/x", "--ov"}), words({"--ovsdb"}));
    EXPECT_EQ(completed({"mac", "received", "--vni", "1", "--vn"}), words({"--vni"}));
}

TEST(Complete, FilesAndDirectories) {
    EXPECT_EQ(completed({"--state", ""}), Words{"files"});
    EXPECT_EQ(completed({"--fabric=x"}), Words{"files"});
    EXPECT_EQ(completed({"--tables", ""}), Words{"directories"});
    EXPECT_EQ(completed({"capture", ""}), Words{"files"});
    EXPECT_EQ(completed({"capture", "a", ""}), words({}));
    EXPECT_EQ(completed({"tables", "publish", ""}), Words{"directories"});
}

TEST(Complete, ValuesOfFixedSets) {
    EXPECT_EQ(completed({"mac", "advertised", "--dest", ""}), words({"switches", "hsc", "evpn"}));
    EXPECT_EQ(completed({"mac", "advertised", "--dest=h"}), words({"--dest=hsc"}));
    EXPECT_EQ(completed({"completion", ""}), words({"bash", "zsh", "fish"}));
    EXPECT_EQ(completed({"model", "--of", "mac"}), words({"mac received", "mac advertised"}));
    EXPECT_EQ(completed({"--trace", ""}), words({"1", "8"}));
    EXPECT_EQ(completed({"--color", "a"}), words({"auto", "always"}));
    EXPECT_EQ(completed({"--watch", ""}), words({}));
}

TEST(Complete, TheFiltersOfTheCommandAfterOf) {
    EXPECT_EQ(completed({"model", "--of", "router routes", "--pref"}), words({"--prefix"}));
    EXPECT_EQ(completed({"model", "--pref"}), words({}));
}

TEST(Complete, NamesInASnapshot) {
    EXPECT_EQ(ofExample({"mac", "received", "--source", "leaf"}),
              words({"leaf1", "leaf2", "leaf3", "leaf4"}));
    EXPECT_EQ(ofExample({"mac", "received", "--source", "h"}), words({"hsc"}));
    EXPECT_EQ(ofExample({"mac", "received", "--vni", ""}),
              words({"10", "20", "30", "4098", "70000"}));
    EXPECT_EQ(ofExample({"router", "map", "--router", ""}), words({"internet", "prod", "storage"}));
    EXPECT_TRUE(contains(ofExample({"router", "map", "--switch", ""}), "00:00:5e:00:53:e1"));
}

TEST(Complete, TheStateCanFollow) {
    // Its place is known only after the word; the shell passes the words before the cursor.
    EXPECT_EQ(completed({"mac", "received", "--state", EXAMPLE_FABRIC, "--source", "leaf1"}),
              words({"leaf1"}));
    EXPECT_EQ(completed({"mac", "received", std::string("--state=") + EXAMPLE_FABRIC, "--source",
                         "leaf1"}),
              words({"leaf1"}));
}

TEST(Complete, TheStateOfTheEnvironment) {
    EXPECT_EQ(completed({"mac", "received", "--source", "leaf1"}, {.stateFile = EXAMPLE_FABRIC}),
              words({"leaf1"}));
    EXPECT_EQ(
        completed({"--frr", "mac", "received", "--source", "leaf1"}, {.stateFile = EXAMPLE_FABRIC}),
        words({}));
}

TEST(Complete, ATildeIsTheHomeFolder) {
    TemporaryFile const state(stateOfSwitches({"leaf1"}));
    auto const slash = state.path().rfind('/');
    auto const setting = Process::Setting{
        .inChild = [&] { setenv("HOME", state.path().substr(0, slash).c_str(), 1); }};
    EXPECT_EQ(completed({"--state", "~" + state.path().substr(slash), "mac", "received", "--source",
                         "leaf"},
                        setting),
              words({"leaf1"}));
}

TEST(Complete, AListIsContinued) {
    EXPECT_EQ(ofExample({"mac", "received", "--source", "leaf1,leaf"}),
              words({"leaf1,leaf2", "leaf1,leaf3", "leaf1,leaf4"}));
    EXPECT_EQ(ofExample({"mac", "received", "--vni=10,7"}), words({"--vni=10,70000"}));
}

TEST(Complete, ANameWithAMeaningIsOfferedAsAName) {
    TemporaryFile const state(stateOfSwitches({"a,b", "star*", "all", "name:x", "plain"}));
    auto const source = [&](std::string const & typed) {
        return completed({"--state", state.path(), "mac", "received", "--source", typed});
    };
    EXPECT_EQ(source("name:"), words({"name:a,b", "name:all", "name:name:x", "name:star*"}));
    EXPECT_EQ(source("plain,"), words({"plain,all", "plain,hsc", "plain,qvx", "plain,evpn"}));
}

TEST(Complete, ANameThatCannotBeTypedAsAValueIsLeftOut) {
    TemporaryFile const state(stateOfSwitches({"-dash", "[list]", ""}));
    auto const source = [&](Words const & typed) {
        Words line{"--state", state.path(), "mac", "received"};
        line.insert(line.end(), typed.begin(), typed.end());
        return completed(line);
    };
    EXPECT_EQ(source({"--source", ""}), words({"all", "hsc", "qvx", "evpn"}));
    EXPECT_EQ(source({"--source=-"}), words({"--source=-dash"}));
}

TEST(Complete, NamesWithControlCharactersAreLeftOut) {
    TemporaryFile const state(stateOfSwitches(
        {R"(xline\nwords)", R"(xtab\t)", R"(xescape\u001b[2J)", R"(xturned\u202e)", "xplain"}));
    EXPECT_EQ(completed({"--state", state.path(), "mac", "received", "--source", "x"}),
              words({"xplain"}));
}

TEST(Complete, TheSwitchesOfAFabricFileWithoutAskingThem) {
    // A program that were asked would leave a file.
    TemporaryFile const asked("");
    ASSERT_EQ(unlink(asked.path().c_str()), 0);
    TemporaryFile const fabric("[[source]]\nkind = \"frr\"\nname = \"leaf7\"\ncommand = "
                               "[\"touch\", \"" +
                               asked.path() +
                               "\"]\n[[source]]\nkind = \"frr\"\nname = \"other\"\nrole = "
                               "\"evpn\"\n");
    EXPECT_EQ(completed({"--fabric", fabric.path(), "mac", "received", "--source", "leaf"}),
              words({"leaf7"}));
    EXPECT_EQ(completed({"--fabric", fabric.path(), "mac", "received", "--source", "ot"}),
              words({}));
    EXPECT_EQ(completed({"--fabric", fabric.path(), "mac", "received", "--vni", ""}), words({}));
    EXPECT_NE(access(asked.path().c_str(), F_OK), 0);
}

TEST(Complete, AnInvalidStateHasNoNames) {
    TemporaryFile const broken("{");
    for (char const * const option : {"--state", "--fabric", "--tables"}) {
        EXPECT_EQ(completed({option, broken.path(), "mac", "received", "--source", "l"}),
                  words({}));
        EXPECT_EQ(completed({option, "/nonexistent", "mac", "received", "--source", "l"}),
                  words({}));
    }
}

TEST(Complete, APipeIsNotOpened) {
    TemporaryFile const pipe("");
    ASSERT_EQ(unlink(pipe.path().c_str()), 0);
    ASSERT_EQ(mkfifo(pipe.path().c_str(), 0600), 0);
    EXPECT_EQ(completed({"--state", pipe.path(), "mac", "received", "--source", "l"}), words({}));
    EXPECT_EQ(completed({"--fabric", pipe.path(), "mac", "received", "--source", "l"}), words({}));
    EXPECT_EQ(completed({"--state", "-", "mac", "received", "--source", "l"},
                        {.input = stateOfSwitches({"leaf1"})}),
              words({}));
}

TEST(Complete, ALongSnapshotIsNotRead) {
    constexpr std::size_t longest = std::size_t{4} << 20; // as docs/commands/completion.md says
    std::string text = stateOfSwitches({"leaf1"});
    text.append(longest - text.size(), ' ');
    TemporaryFile const fits(text);
    TemporaryFile const longer(text + " ");
    EXPECT_EQ(completed({"--state", fits.path(), "mac", "received", "--source", "l"}),
              words({"leaf1"}));
    EXPECT_EQ(completed({"--state", longer.path(), "mac", "received", "--source", "l"}), words({}));
}

TEST(Complete, WordsForBashAreQuotedAndReplaceTheLastPart) {
    TemporaryFile const state(stateOfSwitches({"$(touch x)", "rack 1"}));
    auto const bash = [&](std::string const & end) {
        return runVxshow({"complete", "bash", " \t\n\"'><=;|&(:",
                          "vxshow --state " + state.path() + " mac received " + end})
            .out;
    };
    EXPECT_EQ(bash("--source=ra"), "words\nrack\\ 1\n");
    EXPECT_EQ(bash("--source '$"), "words\n$(touch x)\n");
    EXPECT_EQ(bash("--source \\$"), "words\n\\$\\(touch\\ x\\)\n");
}

TEST(Complete, ArgumentsThatNoScriptGivesAreAnsweredWithNothing) {
    for (Words const & arguments :
         {Words{"complete", "bash"}, Words{"complete", "bash", "", ""}, Words{"complete", "zsh"},
          Words{"complete", "zsh", "--"}, Words{"complete", "fish", "x", "y"}}) {
        Finished const finished = runVxshow(arguments);
        EXPECT_EQ(finished.out + finished.err, "");
        EXPECT_EQ(finished.status, 0);
    }
    EXPECT_EQ(runVxshow({"complete", "csh", "--", ""}).status, 2);
}

TEST(Complete, AFullDiskIsSilent) {
    int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    Process process({"complete", "zsh", "--", ""}, {.outFd = full});
    EXPECT_EQ(process.finish().err, "");
    close(full);
}

TEST(Completion, AScriptForEachShell) {
    for (char const * const shell : {"bash", "zsh", "fish"}) {
        Finished const finished = runVxshow({"completion", shell});
        EXPECT_EQ(finished.status, 0);
        EXPECT_NE(finished.out.find(std::string("complete ") + shell), std::string::npos);
    }
    EXPECT_EQ(refused({"completion", "csh"}), "SHELL: 'csh': expected bash, zsh or fish");
}
