#include "tests/live/Hostile.h"
#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

constexpr char const * goodTables = R"({
"Logical_Switch": {"00000000-0000-4000-8000-000000000001": {"name": "red", "tunnel_key": 5001}},
"Physical_Locator": {"00000000-0000-4000-8000-000000000002":
                     {"dst_ip": "10.0.0.1", "encapsulation_type": "vxlan_over_ipv4"}},
"Physical_Switch": {"00000000-0000-4000-8000-000000000003":
                    {"name": "leaf1", "tunnel_ips": "10.0.0.1"}},
"Ucast_Macs_Local": {"00000000-0000-4000-8000-000000000004":
    {"MAC": "00:00:5e:00:53:01", "ipaddr": "",
     "logical_switch": ["uuid", "00000000-0000-4000-8000-000000000001"],
     "locator": ["uuid", "00000000-0000-4000-8000-000000000002"]}}
})";

class HostileDatabase : public testing::TestWithParam<Hostile> {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::database); }
};

} // namespace

TEST_P(HostileDatabase, IsReportedInTimeAndTheOthersAreShown) {
    FakeOvsdb const hostile(GetParam().behaviour, goodTables);
    FakeOvsdb const good("answer", goodTables);
    Folder const folder;
    FabricText text;
    text.database("hostile", hostile.remote(), GetParam().timeLimitLine());
    text.database("good", good.remote(), "time_limit = 30");
    auto const fabric = folder.write("fabric.toml", text.text());
    auto const start = std::chrono::steady_clock::now();
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(50));
    EXPECT_EQ(finished.status, 3);
    auto const failures = failuresOf(finished);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].source, "hostile");
    EXPECT_TRUE(failures[0].text.starts_with(GetParam().reason)) << failures[0].text;
    EXPECT_EQ(rowsOf(finished.out),
              Words{"leaf1             5001        0000.5e00.5301  10.0.0.1            0"});
}

TEST_P(HostileDatabase, AllOrNothingShowsNothing) {
    FakeOvsdb const hostile(GetParam().behaviour, goodTables);
    Folder const folder;
    auto const fabric = folder.write(
        "fabric.toml",
        FabricText().database("hostile", hostile.remote(), GetParam().timeLimitLine()).text());
    auto const finished = ask({"--fabric", fabric, "--all-or-nothing", "arp", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(failuresOf(finished).size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Each, HostileDatabase,
    testing::Values(Hostile{"cut", "broken answer"}, Hostile{"close", "broken answer"},
                    Hostile{"garbage", "broken answer"}, Hostile{"deep", "broken answer"},
                    Hostile{"shape", "broken answer"}, Hostile{"short", "broken answer"},
                    Hostile{"error", "broken answer"}, Hostile{"refuse", "no such schema"},
                    Hostile{"blanks", "time limit", 1}, Hostile{"silent", "time limit", 1},
                    Hostile{"trickle", "time limit", 1}),
    [](auto const & each) { return std::string(each.param.behaviour); });

namespace {

constexpr char const * oddTables = R"({
"Logical_Switch": {"00000000-0000-4000-8000-000000000001":
                   {"name": "red\u001b[2J\nvxshow: forged", "tunnel_key": 5001}},
"Physical_Locator": {"00000000-0000-4000-8000-000000000002":
                     {"dst_ip": "10.0.0.1", "encapsulation_type": "vxlan_over_ipv4"}},
"Physical_Switch": {"00000000-0000-4000-8000-000000000003":
                    {"name": "leaf\u001b[2J\n100%s%n\u0085", "tunnel_ips": "10.0.0.1"}},
"Logical_Router": {"00000000-0000-4000-8000-000000000005":
    {"name": "tenant\u001b[2J\n100%s%n/../x",
     "static_routes": ["map", [["10.0.0.0/8", "10.0.0.1"]]]}},
"Ucast_Macs_Local": {"00000000-0000-4000-8000-000000000004":
    {"MAC": "00:00:5e:00:53:01", "ipaddr": "",
     "logical_switch": ["uuid", "00000000-0000-4000-8000-000000000001"],
     "locator": ["uuid", "00000000-0000-4000-8000-000000000002"]}}
})";

std::string replaced(std::string text, std::string const & from, std::string const & to) {
    text.replace(text.find(from), from.size(), to);
    return text;
}

class OddDatabase : public testing::Test {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::database); }
};

} // namespace

TEST_F(OddDatabase, NamesAreShownAsFromASnapshot) {
    FakeOvsdb const odd("answer", oddTables);
    Folder const folder;
    auto const fabric =
        folder.write("fabric.toml", FabricText().database("odd", odd.remote()).text());
    expectSameListings({"--fabric", fabric}, expectedSnapshot(folder, fabric));
    auto const capture = folder.file("capture.json");
    EXPECT_EQ(shown({"--fabric", fabric, "capture", capture}), "");
    expectSameListings({"--fabric", fabric}, capture);
}

TEST_F(OddDatabase, AnInvalidEntryIsOneLineOfWarning) {
    FakeOvsdb const odd("answer",
                        replaced(oddTables, "00:00:5e:00:53:01", "none\\u001b[2J\\nvxshow: x: y"));
    Folder const folder;
    auto const fabric =
        folder.write("fabric.toml", FabricText().database("odd", odd.remote()).text());
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(warningOf(finished, "odd"), "");
    EXPECT_EQ(rowsOf(finished.out), Words{});
}

TEST_F(OddDatabase, ALocatorOfNoSwitchIsShownUnderTheNameOfTheSource) {
    FakeOvsdb const odd("answer", replaced(oddTables, R"("tunnel_ips": "10.0.0.1")",
                                           R"("tunnel_ips": ["set", []])"));
    Folder const folder;
    auto const fabric =
        folder.write("fabric.toml", FabricText().database("odd", odd.remote()).text());
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(warningOf(finished, "odd"), "");
    EXPECT_EQ(rowsOf(finished.out),
              Words{"odd               5001        0000.5e00.5301  10.0.0.1            0"});
}
