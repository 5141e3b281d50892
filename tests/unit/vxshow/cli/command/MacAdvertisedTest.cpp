#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

/// VNI 4098 as advertised to the switches, to HSC and to EVPN, and VNI 7.
Asked const macAdvertised({"mac", "advertised"}, snapshotWith("advertised", R"({
  "vnis": {
    "4098": { "unicast": { "02:00:00:00:00:01": { "vtep": "10.0.0.1", "moves": 3 } },
              "multipath": { "02:00:00:00:00:02": [ "10.0.0.1", "10.0.0.2" ] },
              "flood": { "00:00:00:00:00:00":
                           [ "10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4" ],
                         "02:00:00:00:00:02": [ "10.0.0.3" ] } },
    "7":    { "unicast": { "02:00:00:00:00:07": { "vtep": "10.0.0.7" } } } },
  "sources": { "HSC": {
    "4098": { "unicast": { "02:00:00:00:00:0a": { "vtep": "10.0.0.1" } } } } },
  "evpn": { "EVPN": {
    "hosts": { "4098": { "02:00:00:00:00:0b": { "vtep": "10.0.0.1" } } } } } })"));

constexpr char const * toSwitches = "4098        0200.0000.0001  10.0.0.1            3\n";
constexpr char const * toHsc = "4098        0200.0000.000a  10.0.0.1            0\n";
constexpr char const * toEvpn = "4098        0200.0000.000b  10.0.0.1            0\n";

constexpr char const * macAdvertisedHead =
    "            Advertised Mac Address Table\n"
    "-----------------------------------------------------------------------------\n"
    "\n"
    "VNI         Mac Address       VTEP            Moves\n"
    "----------- ----------------- --------------- -----\n";
constexpr char const * beforeFlood =
    "\n"
    "            Advertised Flood Table\n"
    "---------------------------------------------------\n"
    "\n"
    "VNI         Mac Address       VTEP(s)\n"
    "----------- ----------------- -----------------------------------------------\n";

std::string macAdvertisedTotal(int count) {
    return "Total Mac Addresses for this criterion: " + std::to_string(count) + "\n";
}

bool shows(std::string const & out, char const * row) {
    return out.find(row) != std::string::npos;
}

} // namespace

TEST(MacAdvertised, ListsWhatIsAdvertisedToSwitches) {
    EXPECT_EQ(macAdvertised.listing({}),
              std::string(macAdvertisedHead) +
                  "7           0200.0000.0007  10.0.0.7            0\n" + toSwitches +
                  macAdvertisedTotal(2) + beforeFlood +
                  "4098        0200.0000.0002  10.0.0.1        10.0.0.2       \n"
                  "4098        0000.0000.0000  10.0.0.1        10.0.0.2        10.0.0.3       \n"
                  "                              10.0.0.4       \n" +
                  macAdvertisedTotal(2));
}

TEST(MacAdvertised, ListsAsJson) {
    EXPECT_EQ(
        macAdvertised.listing({"--json", "--vni", "4098", "--mac", "0200.0000.0002"}),
        R"({"vniInDottedNotation":false,"vnis":[{"macAddress":"00:00:00:00:00:00","vni":4098,)"
        R"("unicastHostTable":[],"bumVtepListTable":[{"vtepIpListType":"sendToAny",)"
        R"("macAddr":"02:00:00:00:00:02","vtepIpList":["10.0.0.1","10.0.0.2"]},)"
        R"({"vtepIpListType":"sendToAll","macAddr":"02:00:00:00:00:02",)"
        R"("vtepIpList":["10.0.0.3"]}]}]})"
        "\n");
}

TEST(MacAdvertised, AcceptsEachFilterInEachForm) {
    for (auto const & filters :
         std::vector<std::vector<std::string>>{{"--vni", "4098"},
                                               {"--vni", "0.16.2"},
                                               {"--vni=4098"},
                                               {"--mac", "02:00:00:00:00:01"},
                                               {"--mac", "02-00-00-00-00-01"},
                                               {"--mac", "0200.0000.0001"},
                                               {"--mac", "00:00:00:00:00:00"},
                                               {"--vtep", "10.0.0.1"},
                                               {"--vtep", "10.0.0.9", "10.0.0.1"},
                                               {"--vtep", "10.0.0.9", "--vtep", "10.0.0.1"},
                                               {"--vni", "4098", "--mac", "0200.0000.0001"}}) {
        EXPECT_TRUE(shows(macAdvertised.listing(filters), toSwitches))
            << testing::PrintToString(filters);
    }
}

TEST(MacAdvertised, HasThreeDestinationsAndRefusesAnyOther) {
    std::string const everything = macAdvertised.listing({});
    EXPECT_EQ(macAdvertised.listing({"--dest", "switches"}), everything);
    EXPECT_EQ(macAdvertised.listing({"--dest", ""}), everything);
    for (std::string const dest : {"all", "qvx", "leaf1", "HSC", "Evpn", "hsc,evpn"}) {
        EXPECT_EQ(macAdvertised.refusedFilter({"--dest", dest}),
                  "--dest: '" + dest + "': expected switches, hsc or evpn");
    }
    EXPECT_EQ(macAdvertised.listing({"--dest", "hsc"}), macAdvertisedHead +
                                                            (toHsc + macAdvertisedTotal(1)) +
                                                            beforeFlood + macAdvertisedTotal(0));
    EXPECT_EQ(macAdvertised.listing({"--dest=evpn"}), macAdvertisedHead +
                                                          (toEvpn + macAdvertisedTotal(1)) +
                                                          beforeFlood + macAdvertisedTotal(0));
    EXPECT_TRUE(shows(macAdvertised.listing({"--dest", "hsc", "--vni", "0.16.2"}), toHsc));
    EXPECT_FALSE(shows(macAdvertised.listing({"--dest", "hsc", "--vni", "7"}), toHsc));
    EXPECT_FALSE(shows(macAdvertised.listing({"--dest", "evpn", "--vtep", "10.0.0.2"}), toEvpn));
}

TEST(MacAdvertised, AFilterThatMatchesNothingIsNotAnError) {
    std::string const nothing =
        macAdvertisedHead + macAdvertisedTotal(0) + beforeFlood + macAdvertisedTotal(0);
    EXPECT_EQ(macAdvertised.listing({"--vni", "4097"}), nothing);
    EXPECT_EQ(macAdvertised.listing({"--mac", "0200.0000.0003"}), nothing);
    EXPECT_EQ(macAdvertised.listing({"--vtep", "10.0.0.8"}), nothing);
}

TEST(MacAdvertised, AbsentStateIsAnEmptyTable) {
    std::string const received = snapshotWith("received", R"({"sources":{"HSC":{"7":{}}}})");
    for (char const * dest : {"", "hsc", "evpn"}) {
        EXPECT_EQ(answer(received, {"mac", "advertised", "--dest", dest}),
                  macAdvertisedHead + macAdvertisedTotal(0) + beforeFlood + macAdvertisedTotal(0));
    }
}

TEST(MacAdvertised, RefusesInvalidValues) {
    EXPECT_EQ(macAdvertised.refusedFilter({"--vni", "16777216"}),
              "--vni: '16777216': expected a VNI from 0 to 16777215, decimal or dotted such as "
              "0.16.2");
    EXPECT_EQ(macAdvertised.refusedFilter({"--mac", "02:00"}).substr(0, 16), "--mac: '02:00': ");
    EXPECT_EQ(macAdvertised.refusedFilter({"--vtep", "2001:db8::1"}).substr(0, 23),
              "--vtep: '2001:db8::1': ");
    EXPECT_EQ(macAdvertised.refusedFilter({"--dest"}), "--dest: no value; expected NAME");
    macAdvertised.knowsNone({"--source", "--switch", "--ip"});
}
