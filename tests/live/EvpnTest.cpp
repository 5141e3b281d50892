#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

namespace {

/// Three real VTEPs, shown as switches. The tests only read.
class Evpn : public testing::Test {
protected:
    static void SetUpTestSuite() {
        if (missingFor(Lab::evpn)) {
            return;
        }
        folder = std::make_unique<Folder>();
        FabricText text;
        for (unsigned const vtep : {1U, 2U, 3U}) {
            text.vtysh("vtep" + std::to_string(vtep), {"vtysh"},
                       "path_space = '" + EvpnLab::shared().pathSpace(vtep) +
                           "'\ntime_limit = 30\nsystem_id = '00:1c:73:00:00:0" +
                           std::to_string(vtep) + "'");
        }
        fabric = folder->write("fabric.toml", text.text());
    }

    static void TearDownTestSuite() { folder.reset(); }

    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::evpn); }

    static std::string listing(Words const & words) {
        return shown(Words{"--fabric", fabric} + words);
    }

    /// What is shown of one of them, named "leaf" and queried with the vtysh command `words`.
    static std::string of(Words const & words, std::string const & more, Words const & command) {
        auto const path =
            folder->write("leaf.toml", FabricText().vtysh("leaf", words, more).text());
        return shown(Words{"--fabric", path} + command);
    }

    static std::unique_ptr<Folder> folder;
    static std::string fabric;
};

std::unique_ptr<Folder> Evpn::folder;
std::string Evpn::fabric;

} // namespace

TEST_F(Evpn, EveryListingMatchesAnIndependentReaderOfTheDaemons) {
    expectSameListings({"--fabric", fabric}, expectedSnapshot(*folder, fabric));
}

TEST_F(Evpn, AMacThatMovedIsShownAtItsNewPlaceWithTheNumberOfMoves) {
    auto const received = rowsOf(listing({"mac", "received", "--mac", "02:40:98:00:ee:01"}));
    EXPECT_EQ(received,
              Words{"vtep3             4098        0240.9800.ee01  10.0.0.3            2"});
    auto const back = rowsOf(listing({"mac", "received", "--mac", "02:40:98:00:ee:02"}));
    EXPECT_EQ(back, Words{"vtep1             4098        0240.9800.ee02  10.0.0.1            2"});
}

TEST_F(Evpn, AMacBehindASegmentIsBehindAllItsVteps) {
    auto const rows = rowsOf(of({"vtysh"}, "path_space = '" + EvpnLab::shared().pathSpace(1) + "'",
                                {"mac", "advertised", "--mac", "02:40:98:00:e5:01"}));
    EXPECT_EQ(rows, Words{"4098        0240.9800.e501  10.0.0.2        10.0.0.3       "});
}

TEST_F(Evpn, FloodListsHaveTheOtherVteps) {
    auto const rows =
        rowsWith(rowsOf(of({"vtysh"}, "path_space = '" + EvpnLab::shared().pathSpace(2) + "'",
                           {"mac", "advertised"})),
                 "0000.0000.0000");
    EXPECT_EQ(rows, (Words{"10          0000.0000.0000  10.0.0.1        10.0.0.3       ",
                           "20          0000.0000.0000  10.0.0.1        10.0.0.3       ",
                           "4098        0000.0000.0000  10.0.0.1        10.0.0.3       "}));
}

TEST_F(Evpn, AnAddressIsBoundToItsMacAtItsVtep) {
    auto const rows = rowsOf(listing({"arp", "received", "--ip", "192.168.10.21"}));
    EXPECT_EQ(rows,
              Words{"vtep2               10       192.168.10.21   0200.1000.0201     0        "});
}

TEST_F(Evpn, ARouteFromTwoVtepsHasBothAsNexthops) {
    auto const text = of({"vtysh"}, "path_space = '" + EvpnLab::shared().pathSpace(1) + "'",
                         {"router", "routes", "--router", "tenant1", "--prefix", "203.0.113.0/24"});
    EXPECT_NE(text.find("tenant1     203.0.113.0/24     10.0.0.2, 10.0.0.3"), std::string::npos)
        << text;
}

TEST_F(Evpn, TheFilterForAVniSelectsAllItsRows) {
    for (Words const & command : {Words{"mac", "received"},
                                  {"mac", "advertised"},
                                  {"arp", "received"},
                                  {"arp", "advertised"}}) {
        auto const all = rowsOf(listing(command));
        for (auto const * const vni : {"10", "20", "4098", "77", "5001"}) {
            EXPECT_EQ(rowsOf(listing(command + Words{"--vni", vni})), rowsOfVni(all, vni))
                << command[0] << command[1] << vni;
        }
    }
}

TEST_F(Evpn, TheFilterForAMacSelectsAllItsRows) {
    for (Words const & command : {Words{"mac", "received"},
                                  {"mac", "advertised"},
                                  {"arp", "received"},
                                  {"arp", "advertised"}}) {
        auto const all = rowsOf(listing(command));
        for (auto const * const mac : {"0240.9800.ee03", "0240.9800.e501", "0200.1000.0201",
                                       "0200.0000.0001", "0200.2000.0399"}) {
            EXPECT_EQ(rowsOf(listing(command + Words{"--mac", mac})), rowsWith(all, mac))
                << command[0] << command[1] << mac;
            EXPECT_EQ(rowsOf(listing(command + Words{"--mac", mac, "--vni", "4098"})),
                      rowsOfVni(rowsWith(all, mac), "4098"));
        }
    }
}

TEST_F(Evpn, ASocketFolderWorksLikeAPathSpace) {
    auto const & lab = EvpnLab::shared();
    EXPECT_EQ(of(lab.vtysh(3), "", {"mac", "received"}),
              of({"vtysh"}, "path_space = '" + lab.pathSpace(3) + "'", {"mac", "received"}));
}

TEST_F(Evpn, EveryListingIsTheSameThroughARemoteShell) {
    auto const & lab = EvpnLab::shared();
    auto const far = Words{labProgram("fake-ssh"), "vtep2"} + lab.vtysh(2);
    for (Words const & command : listings()) {
        EXPECT_EQ(of(far, "remote_shell = true", command), of(lab.vtysh(2), "", command));
    }
}

TEST_F(Evpn, TheOptionForTheDaemonOfThisMachineRunsVtysh) {
    auto const & lab = EvpnLab::shared();
    Folder const programs;
    auto const & words = lab.vtysh(1);
    auto const vtysh = programs.write("vtysh", "#!/bin/sh\nPATH=${PATH#*:}\nexec " + words[0] +
                                                   " " + words[1] + " " + words[2] + " \"$@\"\n");
    outputOf({"chmod", "+x", vtysh});
    Process::Setting setting;
    setting.inChild = [&] {
        unsetenv("VXSHOW_FABRIC");
        setenv("PATH", (programs.path() + ":" + getenv("PATH")).c_str(), 1);
    };
    auto const finished = runVxshow({"--frr", "mac", "advertised"}, setting);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out, of(words, "", {"mac", "advertised"}));
}

TEST_F(Evpn, ACaptureReplaysEveryListing) {
    auto const path = folder->file("capture.json");
    EXPECT_EQ(shown({"--fabric", fabric, "capture", path}), "");
    expectSameListings({"--fabric", fabric}, path);
}

TEST_F(Evpn, AsEvpnItsRemoteEntriesAreReceived) {
    auto const evpn =
        folder->write("evpn.toml", FabricText()
                                       .vtysh("evpn", {"vtysh"},
                                              "path_space = '" + EvpnLab::shared().pathSpace(1) +
                                                  "'\nrole = 'evpn'")
                                       .text());
    expectSameListings({"--fabric", evpn}, expectedSnapshot(*folder, evpn));
    EXPECT_EQ(rowsOf(shown({"--fabric", evpn, "mac", "received", "--mac", "02:40:98:00:ee:01"})),
              Words{"EVPN              4098        0240.9800.ee01  10.0.0.3            2"});
}

TEST_F(Evpn, ADaemonThatHangsIsReportedAndTheOthersAreShown) {
    auto const & lab = EvpnLab::shared();
    FabricText text;
    text.vtysh("hangs", lab.vtysh(1), "time_limit = 0.5");
    text.vtysh("answers", lab.vtysh(2), "time_limit = 30");
    auto const path = folder->write("hanging.toml", text.text());
    outputOf({"kill", "-STOP", lab.zebra(1)});
    auto const finished = ask({"--fabric", path, "mac", "received"});
    outputOf({"kill", "-CONT", lab.zebra(1)});
    EXPECT_EQ(finished.status, 3);
    auto const failures = failuresOf(finished);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].source, "hangs");
    EXPECT_TRUE(failures[0].text.starts_with("time limit")) << failures[0].text;
    EXPECT_GT(rowsWith(rowsOf(finished.out), "answers").size(), 0U);
}

TEST_F(Evpn, APathSpaceWithoutDaemonsIsUnreachable) {
    auto const path = folder->write(
        "nowhere.toml",
        FabricText().vtysh("nowhere", {"vtysh"}, "path_space = 'none-at-all'").text());
    expectNothingShown(ask({"--fabric", path, "mac", "received"}), "nowhere", "unreachable");
}

TEST_F(Evpn, ANewMacIsShownOnceTheDaemonKnowsIt) {
    auto const & lab = EvpnLab::shared();
    // Where it is it is received, and where that is known it is advertised.
    auto const isShown = [&](unsigned vtep, std::string const & direction) {
        auto const space = "path_space = '" + lab.pathSpace(vtep) + "'";
        return !rowsOf(of({"vtysh"}, space, {"mac", direction, "--mac", "02:40:98:00:aa:01"}))
                    .empty();
    };
    auto const isEverywhere = [&] {
        return isShown(1, "advertised") && isShown(2, "received") && isShown(3, "advertised");
    };
    auto const isAnywhere = [&] {
        return isShown(1, "advertised") || isShown(2, "received") || isShown(3, "advertised");
    };
    EXPECT_FALSE(isAnywhere());
    auto const added = lab.lab({"exec", "2", "default", "bridge", "fdb", "add", "02:40:98:00:aa:01",
                                "dev", "host4098", "master", "dynamic"});
    EXPECT_EQ(added.status, 0) << added.err;
    waitUntil("the MAC to be shown", isEverywhere);
    auto const removed = lab.lab({"exec", "2", "default", "bridge", "fdb", "del",
                                  "02:40:98:00:aa:01", "dev", "host4098", "master"});
    EXPECT_EQ(removed.status, 0) << removed.err;
    // Other tests compare readings of all three VTEPs, which have to show the same state.
    waitUntil("the MAC to be gone", [&] { return !isAnywhere(); });
}
