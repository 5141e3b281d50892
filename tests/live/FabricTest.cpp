#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

namespace {

/// Several sources at once: databases and daemons, in all roles.
class Fabric : public testing::Test {
protected:
    void SetUp() override {
        VXSHOW_NEEDS_LAB(Lab::database);
        lab_ = std::make_unique<OvsdbLab>();
        lab_->fillSmall();
    }

    std::string write(FabricText const & text) const {
        return folder_.write("fabric.toml", text.text());
    }

    std::string expected(std::string const & fabric) const {
        return expectedSnapshot(folder_, fabric);
    }

    OvsdbLab const & lab() const { return *lab_; }

    Folder const & folder() const { return folder_; }

private:
    Folder folder_;
    std::unique_ptr<OvsdbLab> lab_;
};

/// Expects a single failure, that of the source "down".
void expectDownIsReported(Finished const & finished) {
    auto const failures = failuresOf(finished);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].source, "down");
    EXPECT_TRUE(failures[0].text.starts_with("unreachable")) << failures[0].text;
}

} // namespace

TEST_F(Fabric, AMacThatTwoSourcesLocateDifferentlyIsShownUnderEach) {
    OvsdbLab const other;
    other.transact(
        R"({"op": "insert", "table": "Logical_Switch", "row": {"name": "red", "tunnel_key": 5001},
            "uuid-name": "red"},
           {"op": "insert", "table": "Physical_Locator", "uuid-name": "at",
            "row": {"dst_ip": "10.0.0.7", "encapsulation_type": "vxlan_over_ipv4"}},
           {"op": "insert", "table": "Physical_Switch", "uuid-name": "leaf7",
            "row": {"name": "leaf7", "tunnel_ips": "10.0.0.7"}},
           {"op": "insert", "table": "Global", "row": {"switches": ["named-uuid", "leaf7"]}},
           {"op": "insert", "table": "Ucast_Macs_Local", "row": {"MAC": "00:00:5E:00:53:01",
            "logical_switch": ["named-uuid", "red"], "locator": ["named-uuid", "at"]}})");
    FabricText text;
    text.database("rack1", lab().remote()).database("rack2", other.remote());
    auto const fabric = write(text);
    EXPECT_EQ(rowsOf(shown({"--fabric", fabric, "mac", "received", "--mac", "0000.5e00.5301"})),
              (Words{"leaf1             5001        0000.5e00.5301  10.0.0.1            0",
                     "leaf7             5001        0000.5e00.5301  10.0.0.7            0"}));
    expectSameListings({"--fabric", fabric}, expected(fabric));
}

TEST_F(Fabric, BothKindsAtOnceAsSwitches) {
    VXSHOW_NEEDS_LAB(Lab::evpn);
    auto const & evpn = EvpnLab::shared();
    FabricText text;
    text.database("rack1", lab().remote(), "[source.system_ids]\nleaf1 = '00:1c:73:00:00:01'");
    text.vtysh("vtep1", evpn.vtysh(1), "system_id = '00:1c:73:00:01:01'\ntime_limit = 30");
    text.vtysh("vtep2", evpn.vtysh(2), "system_id = '00:1c:73:00:01:02'\ntime_limit = 30");
    auto const fabric = write(text);
    expectSameListings({"--fabric", fabric}, expected(fabric));
    auto const capture = folder().file("capture.json");
    EXPECT_EQ(shown({"--fabric", fabric, "capture", capture}), "");
    expectSameListings({"--fabric", fabric}, capture);
}

TEST_F(Fabric, AllRolesAtOnce) {
    VXSHOW_NEEDS_LAB(Lab::evpn);
    auto const & evpn = EvpnLab::shared();
    OvsdbLab const generated;
    generated.fill(3, 60);
    FabricText text;
    text.database("rack1", lab().remote(), "role = 'switch'");
    text.database("hsc", generated.remote(), "role = 'hsc'");
    text.vtysh("qvx", evpn.vtysh(2), "role = 'qvx'\ntime_limit = 30");
    text.vtysh("evpn", evpn.vtysh(1), "role = 'evpn'\ntime_limit = 30");
    auto const fabric = write(text);
    expectSameListings({"--fabric", fabric}, expected(fabric));
    auto const capture = folder().file("capture.json");
    EXPECT_EQ(shown({"--fabric", fabric, "capture", capture}), "");
    expectSameListings({"--fabric", fabric}, capture);
}

TEST_F(Fabric, ASourceThatIsDownIsReportedAndTheRestIsShown) {
    FabricText text;
    text.database("down", "unix:" + folder().file("none"));
    text.database("rack1", lab().remote());
    auto const finished = ask({"--fabric", write(text), "mac", "received"});
    EXPECT_EQ(finished.status, 3);
    expectDownIsReported(finished);
    EXPECT_EQ(finished.out, shown({"--ovsdb", lab().remote(), "mac", "received"}));
}

TEST_F(Fabric, AllOrNothingShowsNothingWhenASourceIsDown) {
    FabricText text;
    text.database("down", "unix:" + folder().file("none"));
    text.database("rack1", lab().remote());
    auto const finished = ask({"--fabric", write(text), "--all-or-nothing", "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    expectDownIsReported(finished);
}

TEST_F(Fabric, AllOrNothingShowsAllWhenAllAnswer) {
    auto const live = Words{"--fabric", write(FabricText().database("rack1", lab().remote()))};
    EXPECT_EQ(shown(live + Words{"--all-or-nothing", "mac", "received"}),
              shown(live + Words{"mac", "received"}));
}

TEST_F(Fabric, EverySourceThatIsDownIsReported) {
    FabricText text;
    for (auto const * const name : {"one", "two", "three"}) {
        text.database(name, "unix:" + folder().file(name));
    }
    auto const finished = ask({"--fabric", write(text), "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(failuresOf(finished).size(), 3U);
}

TEST_F(Fabric, AMissingProgramIsReported) {
    auto const fabric = write(FabricText().vtysh("leaf", {folder().file("vtysh")}));
    expectNothingShown(ask({"--fabric", fabric, "mac", "received"}), "leaf", "no such program");
}

TEST_F(Fabric, AProgramWithoutPermissionToRunIsReported) {
    auto const fabric = write(FabricText().vtysh("leaf", {folder().write("vtysh", "#!/bin/sh\n")}));
    expectNothingShown(ask({"--fabric", fabric, "mac", "received"}), "leaf", "permission");
}

TEST_F(Fabric, AHangingServerIsGivenUpAtItsTimeLimit) {
    lab().signal("STOP");
    auto const fabric = write(FabricText().database("hangs", lab().remote(), "time_limit = 0.3"));
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    lab().signal("CONT");
    expectNothingShown(finished, "hangs", "time limit");
}

TEST_F(Fabric, AFailedCaptureLeavesNoFile) {
    FabricText text;
    text.database("down", "unix:" + folder().file("none"));
    text.database("rack1", lab().remote());
    auto const path = folder().file("capture.json");
    auto const finished = ask({"--fabric", write(text), "--all-or-nothing", "capture", path});
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(run({"test", "-e", path}).status, 0);
}
