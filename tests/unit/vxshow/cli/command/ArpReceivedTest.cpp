#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

Asked const arpReceived({"arp", "received"}, snapshotWith("received", R"({ "switches": {
  "leaf1": {
    "4098": { "arp": {
      "10.0.0.1": { "mac": "02:00:00:00:00:01", "preference": 100, "changes": 3 },
      "2001:db8::ab": { "mac": "02:00:00:00:00:01" } } },
    "7": { "arp": { "10.0.0.7": { "mac": "02:00:00:00:00:07" } } } },
  "leaf2": { "4098": {} } } })"));

constexpr char const * arpReceivedHead =
    "                        Received ARP Table\n"
    "-------------------------------------------------------------------------\n"
    "Switch              VNI      IP Address      MAC Address        Changes\n"
    "------------------- -------- --------------- ------------------ ---------\n";
constexpr char const * arpReceivedIpv4Row =
    "leaf1               4098     10.0.0.1        0200.0000.0001     3        \n";
constexpr char const * arpReceivedIpv6Row =
    "leaf1               4098     2001:db8::ab    0200.0000.0001     0        \n";

std::string arpReceivedTotal(int count) {
    return "\nTotal IP addresses for this criterion: " + std::to_string(count) + "\n";
}

} // namespace

TEST(ArpReceived, ListsAllSwitches) {
    EXPECT_EQ(arpReceived.listing({}),
              std::string(arpReceivedHead) + arpReceivedIpv4Row + arpReceivedIpv6Row +
                  "leaf1               7        10.0.0.7        0200.0000.0007     0        \n" +
                  arpReceivedTotal(3));
}

TEST(ArpReceived, ListsAsTheSameJsonInEachRevision) {
    std::string const expected =
        R"({"switches":{"leaf1":{"vnis":{"0.0.7":{"addresses":{}},"0.16.2":{"addresses":{)"
        R"("10.0.0.1":{"macAddress":"02:00:00:00:00:01","changes":3,"preference":100}}}}},)"
        R"("leaf2":{"vnis":{"0.16.2":{"addresses":{}}}}}})"
        "\n";
    EXPECT_EQ(arpReceived.listing({"--json", "--dotted", "--ip", "10.0.0.1"}), expected);
    EXPECT_EQ(arpReceived.listing({"--json", "--dotted", "--ip", "10.0.0.1", "--revision", "1"}),
              expected);
}

TEST(ArpReceived, AcceptsEachFilterInEachForm) {
    for (auto const & filters :
         std::vector<std::vector<std::string>>{{"--vni", "4098"},
                                               {"--vni", "0.16.2"},
                                               {"--mac", "02:00:00:00:00:01"},
                                               {"--mac", "02-00-00-00-00-01"},
                                               {"--mac=0200.0000.0001"},
                                               {"--switch", "leaf1", "--vni", "4098"},
                                               {"--switch", "", "--vni", "4098"}}) {
        EXPECT_EQ(arpReceived.listing(filters), std::string(arpReceivedHead) + arpReceivedIpv4Row +
                                                    arpReceivedIpv6Row + arpReceivedTotal(2))
            << testing::PrintToString(filters);
    }
    EXPECT_EQ(arpReceived.listing({"--ip", "10.0.0.1"}),
              std::string(arpReceivedHead) + arpReceivedIpv4Row + arpReceivedTotal(1));
    for (char const * ip : {"2001:db8::ab", "2001:0DB8:0:0:0:0:0:AB", "2001:db8::0.0.0.171"}) {
        EXPECT_EQ(arpReceived.listing({"--ip", ip}),
                  std::string(arpReceivedHead) + arpReceivedIpv6Row + arpReceivedTotal(1))
            << ip;
    }
}

TEST(ArpReceived, AFilterThatMatchesNothingIsNotAnError) {
    std::string const nothing = arpReceivedHead + arpReceivedTotal(0);
    for (auto const & filters :
         std::vector<std::vector<std::string>>{{"--vni", "4097"},
                                               {"--mac", "0200.0000.0002"},
                                               {"--ip", "10.0.0.2"},
                                               {"--ip", "::ffff:10.0.0.1"}}) {
        EXPECT_EQ(arpReceived.listing(filters), nothing) << testing::PrintToString(filters);
    }
}

TEST(ArpReceived, ASwitchThatTheStateDoesNotHaveIsReported) {
    for (std::string const name : {"leaf3", "Leaf1", "all"}) {
        auto const [out, line] = arpReceived.unknownName({"--switch", name});
        EXPECT_EQ(out, arpReceivedHead + arpReceivedTotal(0));
        EXPECT_EQ(line.substr(0, line.find(" you")),
                  "--switch: no switch is named \"" + name + (name == "all" ? "\"" : "\"; did"));
    }
    EXPECT_EQ(arpReceived.unknownName({"--json", "--switch", "leaf3"}).out, "{\"switches\":{}}\n");
}

TEST(ArpReceived, AbsentStateIsAnEmptyTable) {
    EXPECT_EQ(answer(snapshotWith("advertised", R"({"vnis":{"7":{}}})"), {"arp", "received"}),
              arpReceivedHead + arpReceivedTotal(0));
}

TEST(ArpReceived, RefusesInvalidValues) {
    for (char const * ip : {"10.0.0", "2001:db8", "fe80::1%eth0", "leaf1", " ::1"}) {
        EXPECT_EQ(arpReceived.refusedFilter({"--ip", ip}),
                  "--ip: '" + std::string(ip) +
                      "': expected an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1");
    }
    EXPECT_EQ(arpReceived.refusedFilter({"--ip", ""}),
              "--ip: '': expected an IPv4 or IPv6 address such as "
              "10.0.0.1 or 2001:db8::1");
    EXPECT_EQ(arpReceived.refusedFilter({"--ip"}), "--ip: no value; expected IP");
    EXPECT_EQ(arpReceived.refusedFilter({"--switch"}), "--switch: no value; expected NAME");
    EXPECT_EQ(arpReceived.refusedFilter({"--vni", "1.2"}).substr(0, 14), "--vni: '1.2': ");
    EXPECT_EQ(arpReceived.refusedFilter({"--mac", "x"}).substr(0, 12), "--mac: 'x': ");
    arpReceived.knowsNone({"--source", "--dest", "--vtep"});
}
