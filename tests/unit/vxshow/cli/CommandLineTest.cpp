#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

namespace {

constexpr char const * row =
    "leaf1             4098        0200.0000.0001  10.0.0.1            3\n";

/// Runs a listing of the small snapshot.
std::string listing(std::vector<std::string> const & arguments) {
    return answer(smallSnapshot(), arguments);
}

bool shows(std::string const & out) {
    return out.find(row) != std::string::npos;
}

std::vector<std::string> received(std::vector<std::string> filters) {
    filters.insert(filters.begin(), {"mac", "received"});
    return filters;
}

} // namespace

TEST(CommandLine, ListsTheReceivedTables) {
    EXPECT_EQ(listing({"mac", "received"}),
              "         Received Mac Address Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP            Moves\n"
              "----------------- ----------- ----------------- --------------- -----\n" +
                  std::string(row) +
                  "Total Mac Addresses for this criterion: 1\n"
                  "\n"
                  "         Received Flood Table\n"
                  "---------------------------------------------------------------------\n"
                  "\n"
                  "Source            VNI         Mac Address       VTEP\n"
                  "----------------- ----------- ----------------- ---------------------\n"
                  "Total Mac Addresses for this criterion: 0\n");
}

TEST(CommandLine, AcceptsEachFilterInEachForm) {
    for (auto const & filters : std::vector<std::vector<std::string>>{
             {"--vni", "4098"},
             {"--vni", "0.16.2"},
             {"--vni=4098"},
             {"--mac", "02:00:00:00:00:01"},
             {"--mac", "02-00-00-00-00-01"},
             {"--mac", "0200.0000.0001"},
             {"--mac", "00:00:00:00:00:00"},
             {"--source", "leaf1"},
             {"--source", "all"},
             {"--source", ""},
             {"--vtep", "10.0.0.1"},
             {"--vtep", "10.0.0.9", "10.0.0.1"},
             {"--vtep", "10.0.0.9", "--vtep", "10.0.0.1"},
             {"--vni", "4098", "--mac", "0200.0000.0001", "--source", "leaf1"}}) {
        EXPECT_TRUE(shows(listing(received(filters)))) << testing::PrintToString(filters);
    }
}

TEST(CommandLine, AFilterThatMatchesNothingIsNotAnError) {
    for (auto const & filters : std::vector<std::vector<std::string>>{{"--vni", "4097"},
                                                                      {"--mac", "0200.0000.0002"},
                                                                      {"--source", "hsc"},
                                                                      {"--vtep", "10.0.0.2"}}) {
        std::string const out = listing(received(filters));
        EXPECT_FALSE(shows(out));
        EXPECT_NE(out.find("Total Mac Addresses for this criterion: 0\n\n"), std::string::npos);
    }
}

TEST(CommandLine, OptionsCanPrecedeOrFollowTheCommand) {
    std::string const json = listing({"--json", "--revision", "1", "mac", "received"});
    EXPECT_EQ(json.substr(0, 21), "{\"switches\":{\"leaf1\":");
    EXPECT_NE(json.find("\"timeLearned\":0"), std::string::npos);
    EXPECT_EQ(listing({"mac", "received", "--json", "--revision", "1"}), json);
    EXPECT_EQ(listing({"mac", "--json", "received", "--revision=1"}), json);
}

TEST(CommandLine, TheRevisionIs2UnlessGiven) {
    EXPECT_EQ(listing({"--json", "mac", "received"}),
              listing({"--json", "--revision", "2", "mac", "received"}));
    EXPECT_EQ(listing({"--json", "mac", "received"}).find("timeLearned"), std::string::npos);
}

TEST(CommandLine, PrettyIsTheSameDocumentIndented) {
    std::string const pretty = listing({"--pretty", "mac", "received"});
    EXPECT_EQ(pretty.substr(0, 30), "{\n  \"switches\": {\n    \"leaf1\":");
}

TEST(CommandLine, DottedShowsVnisAsThreeBytes) {
    EXPECT_NE(listing({"--dotted", "mac", "received"}).find("leaf1             0.16.2      0200"),
              std::string::npos);
}

TEST(CommandLine, TheStateCanComeFromTheEnvironmentOrStandardInput) {
    TemporaryFile const state(smallSnapshot());
    EXPECT_TRUE(shows(runVxshow({"mac", "received"}, {.stateFile = state.path()}).out));
    EXPECT_TRUE(
        shows(runVxshow({"--state", "-", "mac", "received"}, {.input = smallSnapshot()}).out));
    EXPECT_TRUE(
        shows(runVxshow({"--state", state.path(), "mac", "received"}, {.stateFile = "/nonexistent"})
                  .out));
}

TEST(CommandLine, AnInvalidValueIsRefusedWithWhatIsAccepted) {
    EXPECT_EQ(refused(received({"--vni", "abc"})),
              "--vni: 'abc': expected a VNI from 0 to 16777215, decimal or dotted such as 0.16.2");
    for (char const * vni : {"16777216", "-1", "1.2", "0x10", "010", " 10", "1.2.3.4"}) {
        EXPECT_NE(refused(received({std::string("--vni=") + vni})).find("--vni: '"),
                  std::string::npos);
    }
    for (char const * mac : {"02:00:00:00:00", "0200.0000", "02:00:00:00:00:0g", "leaf1"}) {
        EXPECT_EQ(refused(received({"--mac", mac})).substr(0, 7), "--mac: ");
    }
    for (char const * ip : {"10.0.0", "10.0.0.256", "2001:db8::1", "10.0.0.01"}) {
        EXPECT_EQ(refused(received({"--vtep", "10.0.0.1", ip})).substr(0, 8), "--vtep: ");
    }
    for (char const * number : {"x", "-1", "4294967296", "1.5", " 1"}) {
        EXPECT_EQ(refused({std::string("--revision=") + number, "mac", "received"}),
                  "--revision: '" + std::string(number) +
                      "': expected a whole number from 0 to 4294967295");
    }
    EXPECT_EQ(refused(received({"--vni", ""})).substr(0, 10), "--vni: '':");
    EXPECT_EQ(refused(received({"--mac", ""})).substr(0, 10), "--mac: '':");
    EXPECT_EQ(refused({"--revision", "", "mac", "received"}).substr(0, 15), "--revision: '':");
    EXPECT_EQ(refused({"--trace", "10", "mac", "received"}),
              "--trace: '10': expected a whole number from 0 to 9: 1 traces what is missing, 8 "
              "functions, too");
}

TEST(CommandLine, UnknownWordsAndOptionsAreRefusedWithWhatIsAccepted) {
    EXPECT_EQ(refused({"--json"}),
              "no command: expected mac or arp or router or state or capture or "
              "tables or fabrics or schema or completion or model after vxshow");
    EXPECT_EQ(refused({"foo"}), "'foo': expected mac or arp or router or state or capture or "
                                "tables or fabrics or schema or completion or model after vxshow");
    EXPECT_EQ(refused({"mac"}), "no command: expected received or advertised after vxshow mac");
    EXPECT_EQ(refused({"mac", "sent"}), "'sent': expected received or advertised after vxshow mac");
    EXPECT_EQ(refused({"router", "received"}),
              "'received': expected map or detail or routes after vxshow router");
    EXPECT_EQ(refused({"mac", "received", "--bogus"}),
              "'--bogus': not expected here; see 'vxshow mac received --help'");
    EXPECT_EQ(refused({"mac", "received", "leaf1"}),
              "'leaf1': not expected here; see 'vxshow mac received --help'");
    EXPECT_EQ(refused({"--json", "--pretty", "mac", "received"}), "--json excludes --pretty");
    refused({"--bogus", "mac", "received"});
    refused({"--json=7", "mac", "received"});
    refused({"--dotted=no", "mac", "received"});
    EXPECT_EQ(refused({"mac", "advertised", "--dest", "hsc", "--dest", "evpn"}),
              "--dest: given more than once");
    EXPECT_EQ(refused({"mac", "received", "--revision", "1", "--revision", "2"}),
              "--revision: given more than once");
    EXPECT_EQ(refused({"model", "--vni", "10"}),
              "'--vni': not expected here; see 'vxshow model --help'");
}

TEST(CommandLine, AnOptionWithoutAValueDoesNotTakeTheNextOption) {
    EXPECT_EQ(refused({"mac", "received", "--vni"}), "--vni: no value; expected VNI");
    EXPECT_EQ(refused({"mac", "received", "--source=", "--vni=10"}),
              "--source: no value; expected NAME");
    EXPECT_EQ(refused({"mac", "received", "--source", "--json"}),
              "--source: no value; expected NAME");
    EXPECT_EQ(refused({"--state=", "mac", "received"}), "--state: no value; expected FILE");
    EXPECT_EQ(refused({"--revision", "mac", "received"}),
              "--revision: 'mac': expected a whole number from 0 to 4294967295");
}

TEST(CommandLine, AListInBracketsIsNotAnAddress) {
    EXPECT_EQ(refused(received({"--vtep", "[10.0.0.1,10.0.0.2]"})),
              "--vtep: '[10.0.0.1,10.0.0.2]': expected IP");
    EXPECT_EQ(refused(received({"--vtep", "10.0.0.1", "[10.0.0.2]"})),
              "--vtep: '[10.0.0.2]': expected IP");
}

TEST(CommandLine, ARefusalIsOnePrintableLineWhateverWasTyped) {
    std::string const typed = "x\n\x1b[31m\r\x07\xc2\x9b\xffy";
    for (auto const & arguments : {std::vector<std::string>{typed},
                                   {"mac", "received", "--vni", typed},
                                   {"mac", "received", typed},
                                   {"--revision", typed, "mac", "received"}}) {
        std::string const line = refused(arguments);
        EXPECT_EQ(line.find_first_of("\x1b\r\x07\x9b\xff"), std::string::npos) << line;
    }
}

TEST(CommandLine, WithoutAStateTheWaysToGiveOneAreListed) {
    Finished const finished = runVxshow({"mac", "received"});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.err,
              "vxshow: no state to show: give --state FILE, --fabric FILE, --ovsdb REMOTE, "
              "--frr or --tables DIR, or set VXSHOW_STATE or VXSHOW_FABRIC\n");
}

TEST(CommandLine, TheStateComesFromOnePlace) {
    EXPECT_EQ(refused({"--state", "a", "--fabric", "b", "mac", "received"}),
              "--state and --fabric: expected one of them");
    EXPECT_EQ(refused({"--state", "a", "--frr", "mac", "received"}),
              "--state and --frr: expected one of them");
    EXPECT_EQ(refused({"mac", "received", "--ovsdb", "unix:/a", "--fabric", "b"}),
              "--fabric and --ovsdb: expected one of them");
}

TEST(CommandLine, AnEmptyStatePathIsRefusedEvenIfTheEnvironmentHasOne) {
    TemporaryFile const state(smallSnapshot());
    for (std::string const option : {"--state", "--fabric"}) {
        Finished const finished =
            runVxshow({option, "", "mac", "received"}, {.stateFile = state.path()});
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.err, "vxshow: " + option + ": '': expected the name of a file\n");
    }
}

TEST(CommandLine, TheEnvironmentCanNameOneStateOnly) {
    Finished const finished =
        runVxshow({"mac", "received"},
                  {.stateFile = "a", .inChild = [] { setenv("VXSHOW_FABRIC", "b", 1); }});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.err, "vxshow: VXSHOW_STATE and VXSHOW_FABRIC: both are set; expected one "
                            "of them, or an option that says where the state is\n");
}

TEST(CommandLine, ASeedThatIsNoNumberIsRefused) {
    auto const refusal = [](char const * seed, std::vector<std::string> const & arguments) {
        Finished const finished =
            runVxshow(arguments, {.inChild = [=] { setenv("VEX_HASH_SEED", seed, 1); }});
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.out, "");
        return finished.err;
    };
    std::string const expected = ": expected a whole number from 0 to 18446744073709551615\n";
    EXPECT_EQ(refusal("12a", {"model"}), "vxshow: VEX_HASH_SEED: '12a'" + expected);
    EXPECT_EQ(refusal("-1", {"model"}), "vxshow: VEX_HASH_SEED: '-1'" + expected);
    EXPECT_EQ(refusal("18446744073709551616", {"--state", "none", "mac", "received"}),
              "vxshow: VEX_HASH_SEED: '18446744073709551616'" + expected);
    EXPECT_EQ(refusal("\x1b[2J", {"model"}), "vxshow: VEX_HASH_SEED: '\\x1b[2J'" + expected);
}

TEST(CommandLine, ARemoteIsCheckedOnTheCommandLine) {
    EXPECT_EQ(refused({"--ovsdb", "leaf1", "mac", "received"}),
              "--ovsdb: found \"leaf1\", expected unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
    EXPECT_EQ(refused({"--ovsdb=", "mac", "received"}), "--ovsdb: no value; expected REMOTE");
}

TEST(CommandLine, WatchAcceptsWholeSecondsUpToADay) {
    for (std::string const seconds : {"0", "86401", "1.5", "-1", "x"}) {
        EXPECT_EQ(refused({"--watch", seconds, "mac", "received"}),
                  "--watch: '" + seconds + "': expected a whole number from 1 to 86400");
    }
}

TEST(CommandLine, StandardInputIsNotWatched) {
    EXPECT_EQ(refused({"--watch", "1", "--state", "-", "mac", "received"}),
              "--watch: standard input can be read only once; expected a file or live sources");
}

TEST(CommandLine, CommandsThatDoNotListTheStateAreNotWatched) {
    EXPECT_EQ(refused({"--watch", "1", "--state", "a", "capture", "b"}),
              "--watch: not available for capture");
    EXPECT_EQ(refused({"--watch", "1", "model"}), "--watch: not available for model");
}

TEST(CommandLine, HelpGoesToStandardOutputAndIsNotAnError) {
    for (auto const & arguments : {std::vector<std::string>{"--help"},
                                   {"-h"},
                                   {"mac", "--help"},
                                   {"mac", "received", "--help"}}) {
        Finished const finished = runVxshow(arguments);
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.err, "");
        EXPECT_NE(finished.out.find("Usage: vxshow"), std::string::npos) << finished.out;
    }
    EXPECT_NE(runVxshow({"mac", "received", "--help"}).out.find("--vtep IP"), std::string::npos);
}

TEST(CommandLine, VersionIsTheOneOfTheBuild) {
    Finished const finished = runVxshow({"--version"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "vxshow " VXSHOW_VERSION "\n");
    EXPECT_EQ(finished.err, "");
}
