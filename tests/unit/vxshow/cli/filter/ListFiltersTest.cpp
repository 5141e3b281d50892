#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

/// Filters with several values, ranges, patterns and subnets, on the program itself. What they show
/// is written out here, or is the same as what the state shows without the rest.

namespace {

std::string const listState = R"({"format":"vxlan-controller-state","version":1,
"received": {
  "switches": {
    "leaf1": { "10": { "unicast": { "00:1c:73:00:00:01": { "vtep": "10.0.0.1" },
                                    "02:00:00:00:00:01": { "vtep": "10.0.1.1" } },
                       "multipath": { "00:1c:73:00:00:03": [ "10.0.0.1", "10.0.1.1" ] },
                       "flood": { "00:00:00:00:00:00": [ "10.0.0.1" ] },
                       "arp": { "192.0.2.1": { "mac": "00:1c:73:00:00:01" },
                                "192.0.2.200": { "mac": "02:00:00:00:00:01" },
                                "2001:db8::1": { "mac": "00:1c:73:00:00:01" } } },
               "20": { "unicast": { "00:1c:73:00:00:02": { "vtep": "10.0.0.1" } } } },
    "leaf2": { "30": { "unicast": { "00:1c:73:00:00:04": { "vtep": "10.0.0.2" } } } },
    "all":   { "40": { "unicast": { "00:1c:73:00:00:05": { "vtep": "10.0.0.3" } } } },
    "a,b":   { "50": { "unicast": { "00:1c:73:00:00:06": { "vtep": "10.0.0.4" } } } } },
  "sources": { "HSC": { "10": { "unicast": { "00:1c:73:00:00:07": { "vtep": "10.0.2.1" } } } } },
  "evpn": { "EVPN": { "hosts": { "10": { "00:1c:73:00:00:08": { "vtep": "10.0.2.2" } },
                                 "11": { "02:00:00:00:00:09": { "vtep": "10.0.2.3" } } },
                      "flood": { "10": [ "10.0.2.2" ] } } } },
"advertised": { "vnis": {
    "10": { "unicast": { "00:1c:73:00:00:01": { "vtep": "10.0.0.1" } },
            "multipath": { "00:1c:73:00:00:02": [ "10.0.0.1" ] },
            "flood": { "00:1c:73:00:00:02": [ "10.0.1.1" ], "00:00:00:00:00:00": [ "10.0.0.1" ] } },
    "020": { "unicast": { "00:1c:73:00:00:03": { "vtep": "10.0.0.1" } },
             "arp": { "192.0.2.9": { "mac": "00:1c:73:00:00:03" } } },
    "30": { "unicast": { "00:1c:73:00:00:04": { "vtep": "10.0.0.1" } } } } } })";

/// The rows of both tables of a MAC listing, a word each: the first two columns, "leaf1:10".
std::string rowsOf(std::string const & listing) {
    std::string rows;
    std::size_t from = 0;
    while (from < listing.size()) {
        auto const end = listing.find('\n', from);
        auto const line = listing.substr(from, end - from);
        from = end + 1;
        auto const mac = line.find(".0000.");
        if (mac != std::string::npos || line.find("0000.0000") != std::string::npos ||
            line.find("001c.73") != std::string::npos) {
            auto const source = line.substr(0, line.find_first_of(' '));
            auto const vni = line.find_first_not_of(' ', source.size());
            rows.append(rows.empty() ? "" : " ")
                .append(source)
                .append(":")
                .append(line.substr(vni, line.find(' ', vni) - vni));
        }
    }
    return rows;
}

std::string receivedOf(std::vector<std::string> filters) {
    filters.insert(filters.begin(), {"mac", "received"});
    return answer(listState, filters);
}

std::string advertisedOf(std::vector<std::string> filters) {
    filters.insert(filters.begin(), {"mac", "advertised"});
    return answer(listState, filters);
}

} // namespace

TEST(ListFilters, VnisAreAListOrARange) {
    EXPECT_EQ(rowsOf(receivedOf({"--vni", "20,30"})), "leaf1:20 leaf2:30");
    EXPECT_EQ(rowsOf(receivedOf({"--vni", "20", "--vni", "30"})), "leaf1:20 leaf2:30");
    EXPECT_EQ(rowsOf(receivedOf({"--vni", "15-45"})), "all:40 leaf1:20 leaf2:30");
    EXPECT_EQ(rowsOf(receivedOf({"--vni", "0.0.15-0.0.25"})), "leaf1:20");
    EXPECT_EQ(receivedOf({"--vni", "20-20"}), receivedOf({"--vni", "20"}));
    EXPECT_EQ(receivedOf({"--vni", "1-16777215"}), receivedOf({}));
}

TEST(ListFilters, ASharedTableIsNarrowedToo) {
    EXPECT_EQ(rowsOf(receivedOf({"--source", "evpn", "--vni", "10,12"})), "EVPN:10 EVPN:10");
    EXPECT_EQ(rowsOf(receivedOf({"--source", "evpn", "--vni", "11-12"})), "EVPN:11");
}

TEST(ListFilters, MacAddressesAreAListOrAPrefix) {
    std::string const two = receivedOf({"--mac", "00:1c:73:00:00:01,02:00:00:00:00:01"});
    EXPECT_EQ(rowsOf(two), "leaf1:10 leaf1:10");
    EXPECT_EQ(receivedOf({"--mac", "001c73000001", "--mac", "0200.0000.0001"}), two);
    EXPECT_EQ(rowsOf(receivedOf({"--mac", "02:00/16"})), "leaf1:10 EVPN:11");
    EXPECT_EQ(receivedOf({"--mac", "02:00:*"}), receivedOf({"--mac", "02:00/16"}));
    EXPECT_EQ(receivedOf({"--mac", "001c73000004"}), receivedOf({"--mac", "00:1c:73:00:00:04"}));
}

TEST(ListFilters, TheZeroMacAddressWithItsLengthSelectsTheFloodListsOfAllTraffic) {
    EXPECT_EQ(rowsOf(receivedOf({"--mac", "00:00:00:00:00:00/48"})), "leaf1:10 EVPN:10");
    EXPECT_EQ(receivedOf({"--mac", "00:00:00:00:00:00,00:1c:73:00:00:01"}), receivedOf({}));
}

TEST(ListFilters, SourcesAreNamesPatternsAndWords) {
    EXPECT_EQ(rowsOf(receivedOf({"--source", "leaf*"})),
              "leaf1:10 leaf1:10 leaf1:20 leaf2:30 leaf1:10 leaf1:10 leaf1:10");
    EXPECT_EQ(rowsOf(receivedOf({"--source", "leaf2,hsc"})), "leaf2:30 HSC:10");
    EXPECT_EQ(rowsOf(receivedOf({"--source", "evpn", "--source", "leaf2"})),
              "leaf2:30 EVPN:10 EVPN:11 EVPN:10");
    EXPECT_EQ(receivedOf({"--source", "*"}), receivedOf({"--source", "all"}));
    EXPECT_EQ(receivedOf({"--source", "all,hsc,qvx,evpn"}), receivedOf({}));
}

TEST(ListFilters, ASwitchWhoseNameIsAWordIsAskedForByName) {
    EXPECT_EQ(rowsOf(receivedOf({"--source", "name:all"})), "all:40");
    EXPECT_EQ(rowsOf(receivedOf({"--source", "name:a,b"})), "a,b:50");
    EXPECT_EQ(rowsOf(receivedOf({"--source", "name:all", "--source", "leaf2"})), "all:40 leaf2:30");
}

TEST(ListFilters, ANameInBracketsIsAName) {
    auto const [out, line] =
        answerOfUnknownName(listState, {"mac", "received", "--source", "[leaf1]"});
    EXPECT_EQ(rowsOf(out), "");
    EXPECT_EQ(line, "--source: no source is named \"[leaf1]\"; did you mean leaf1?");
}

TEST(ListFilters, VtepsAreAddressesAndSubnets) {
    EXPECT_EQ(rowsOf(receivedOf({"--vtep", "10.0.1.0/24"})), "leaf1:10 leaf1:10 leaf1:10");
    EXPECT_EQ(receivedOf({"--vtep", "10.0.2.0/31,10.0.2.2"}),
              receivedOf({"--vtep", "10.0.2.1", "10.0.2.2"}));
    EXPECT_EQ(rowsOf(receivedOf({"--vtep", "192.0.2.0/24"})), "");
    EXPECT_EQ(receivedOf({"--vtep", "0.0.0.0/0"}), receivedOf({}));
}

TEST(ListFilters, AMultipathEntryHidesItsFloodListInASubnetAsForItsVteps) {
    EXPECT_EQ(advertisedOf({"--vtep", "10.0.1.0/24"}), advertisedOf({"--vtep", "10.0.1.1"}));
    EXPECT_EQ(rowsOf(advertisedOf({"--vtep", "10.0.1.0/24"})), "");
}

TEST(ListFilters, AdvertisedEntriesAreSelectedByTheVniThatTheCommandReads) {
    EXPECT_EQ(rowsOf(advertisedOf({"--vni", "20,30"})), "20:001c.7300.0003 30:001c.7300.0004");
    EXPECT_EQ(rowsOf(advertisedOf({"--vni", "11-19"})), "");
}

TEST(ListFilters, AnEntryThatTheCommandRefusesIsRefusedInAListToo) {
    auto const state =
        snapshotWith("advertised", R"({"vnis":{"10":{},"99999999":{},"x":{"unicast":{)"
                                   R"("00:1c:73:00:00:01":{"vtep":"10.0.0.1"}}}}})");
    EXPECT_EQ(failure(state, {"mac", "advertised", "--vni", "10,20"}),
              "mac advertised: entry '99999999': expected a VNI from 0 to 16777215");
    EXPECT_EQ(failure(state, {"arp", "advertised", "--vni", "10,20"}),
              "arp advertised: entry '99999999': expected a VNI from 0 to 16777215");
}

TEST(ListFilters, AnEntryWithoutANumberIsVni0OnlyForMacAddresses) {
    auto const state = snapshotWith("advertised", R"({"vnis":{"x":{"unicast":{)"
                                                  R"("00:1c:73:00:00:01":{"vtep":"10.0.0.1"}}}}})");
    EXPECT_EQ(rowsOf(answer(state, {"mac", "advertised", "--vni", "10,20"})), "");
    EXPECT_EQ(rowsOf(answer(state, {"mac", "advertised", "--vni", "0,20"})), "0:001c.7300.0001");
    EXPECT_EQ(failure(state, {"arp", "advertised", "--vni", "10,20"}),
              "arp advertised: entry 'x': found no number, expected a VNI in decimal");
}

TEST(ListFilters, DisagreementsInEntriesThatAreNotSelectedAreNotReported) {
    auto const state = snapshotWith("advertised", R"({"vnis":{
        "10": {"arp":{"192.0.2.1":{"mac":"00:1c:73:00:00:01"}}},
        "010": {"arp":{"192.0.2.1":{"mac":"00:1c:73:00:00:02"}}},
        "20": {"arp":{"192.0.2.2":{"mac":"00:1c:73:00:00:02"}}}}})");
    EXPECT_NE(answer(state, {"arp", "advertised", "--vni", "20-30"}).find("192.0.2.2"),
              std::string::npos);
    EXPECT_EQ(failure(state, {"arp", "advertised", "--vni", "10-30"}).substr(0, 48),
              "arp advertised: entries '010' and '10' of VNI 10");
}

TEST(ListFilters, BindingsAreSelectedBySubnet) {
    std::string const head = "                        Received ARP Table\n"
                             "-------------------------------------------------------------------"
                             "------\n"
                             "Switch              VNI      IP Address      MAC Address        "
                             "Changes\n"
                             "------------------- -------- --------------- ------------------ "
                             "---------\n";
    EXPECT_EQ(answer(listState, {"arp", "received", "--ip", "192.0.2.0/25,2001:db8::/64"}),
              head + "leaf1               10       192.0.2.1       001c.7300.0001     0        \n"
                     "leaf1               10       2001:db8::1     001c.7300.0001     0        \n"
                     "\n"
                     "Total IP addresses for this criterion: 2\n");
    EXPECT_EQ(answer(listState, {"arp", "received", "--mac", "02:*", "--switch", "leaf?"}),
              head + "leaf1               10       192.0.2.200     0200.0000.0001     0        \n"
                     "\n"
                     "Total IP addresses for this criterion: 1\n");
}

/// As for one value: a VNI that is selected stays, even if none of its bindings do.
TEST(ListFilters, AVniWithoutABindingInTheListIsAnEmptyTable) {
    EXPECT_EQ(answer(listState, {"--json", "arp", "received", "--switch", "leaf1,leaf2", "--vni",
                                 "20,30", "--ip", "192.0.2.0/24"}),
              "{\"switches\":{\"leaf1\":{\"vnis\":{\"20\":{\"addresses\":{}}}},"
              "\"leaf2\":{\"vnis\":{\"30\":{\"addresses\":{}}}}}}\n");
}

TEST(ListFilters, TheCollectedObjectsAreThoseOfTheNarrowedState) {
    EXPECT_EQ(answer(listState, {"model", "--of", "mac received", "--source", "leaf2,leaf2"}),
              answer(listState, {"model", "--of", "mac received", "--source", "leaf2"}));
    auto const narrowed =
        answer(listState, {"model", "--of", "mac received", "--source", "leaf2,hsc"});
    EXPECT_NE(narrowed.find("00:1c:73:00:00:04"), std::string::npos);
    EXPECT_EQ(narrowed.find("00:1c:73:00:00:01"), std::string::npos);
}
