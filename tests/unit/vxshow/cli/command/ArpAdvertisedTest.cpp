#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

Asked const arpAdvertised({"arp", "advertised"}, snapshotWith("advertised", R"({ "vnis": {
  "4098": { "arp": {
    "10.0.0.1": { "mac": "02:00:00:00:00:01", "preference": 100, "changes": 3 },
    "2001:db8::ab": { "mac": "02:00:00:00:00:01" } } },
  "7": { "arp": { "10.0.0.7": { "mac": "02:00:00:00:00:07" } } } } })"));

constexpr char const * arpAdvertisedHead =
    "                       Advertised ARP Table\n"
    "-------------------------------------------------------------------------\n"
    "VNI      IP Address      MAC Address        Changes\n"
    "-------- --------------- ------------------ --------\n";
constexpr char const * arpAdvertisedIpv4Row =
    "4098     10.0.0.1        0200.0000.0001     3        \n";
constexpr char const * arpAdvertisedIpv6Row =
    "4098     2001:db8::ab    0200.0000.0001     0        \n";

std::string arpAdvertisedTotal(int count) {
    return "\nTotal IP addresses for this criterion: " + std::to_string(count) + "\n";
}

} // namespace

TEST(ArpAdvertised, ListsAllVnis) {
    EXPECT_EQ(arpAdvertised.listing({}),
              std::string(arpAdvertisedHead) + arpAdvertisedIpv4Row + arpAdvertisedIpv6Row +
                  "7        10.0.0.7        0200.0000.0007     0        \n" +
                  arpAdvertisedTotal(3));
}

TEST(ArpAdvertised, ListsAsTheSameJsonInEachRevision) {
    std::string const expected =
        R"({"vnis":{"0.0.7":{"addresses":{}},"0.16.2":{"addresses":{"10.0.0.1":)"
        R"({"macAddress":"02:00:00:00:00:01","changes":3,"preference":100}}}}})"
        "\n";
    EXPECT_EQ(arpAdvertised.listing({"--json", "--dotted", "--ip", "10.0.0.1"}), expected);
    EXPECT_EQ(arpAdvertised.listing({"--json", "--dotted", "--ip", "10.0.0.1", "--revision", "1"}),
              expected);
}

TEST(ArpAdvertised, AcceptsEachFilterInEachForm) {
    for (auto const & filters :
         std::vector<std::vector<std::string>>{{"--vni", "4098"},
                                               {"--vni=0.16.2"},
                                               {"--mac", "02:00:00:00:00:01"},
                                               {"--mac", "02-00-00-00-00-01"},
                                               {"--mac", "0200.0000.0001"},
                                               {"--vni", "4098", "--mac", "0200.0000.0001"}}) {
        EXPECT_EQ(arpAdvertised.listing(filters), std::string(arpAdvertisedHead) +
                                                      arpAdvertisedIpv4Row + arpAdvertisedIpv6Row +
                                                      arpAdvertisedTotal(2))
            << testing::PrintToString(filters);
    }
    EXPECT_EQ(arpAdvertised.listing({"--ip", "10.0.0.1"}),
              std::string(arpAdvertisedHead) + arpAdvertisedIpv4Row + arpAdvertisedTotal(1));
    for (char const * ip : {"2001:db8::ab", "2001:0DB8:0:0:0:0:0:AB", "2001:db8::0.0.0.171"}) {
        EXPECT_EQ(arpAdvertised.listing({"--ip", ip}),
                  std::string(arpAdvertisedHead) + arpAdvertisedIpv6Row + arpAdvertisedTotal(1))
            << ip;
    }
}

TEST(ArpAdvertised, AFilterThatMatchesNothingIsNotAnError) {
    std::string const nothing = arpAdvertisedHead + arpAdvertisedTotal(0);
    EXPECT_EQ(arpAdvertised.listing({"--vni", "4097"}), nothing);
    EXPECT_EQ(arpAdvertised.listing({"--mac", "0200.0000.0002"}), nothing);
    EXPECT_EQ(arpAdvertised.listing({"--ip", "2001:db8::1"}), nothing);
    EXPECT_EQ(arpAdvertised.listing({"--json", "--vni", "4097"}), "{\"vnis\":{}}\n");
}

TEST(ArpAdvertised, AbsentStateIsAnEmptyTable) {
    EXPECT_EQ(answer(snapshotWith("received", R"({"switches":{"leaf1":{"7":{}}}})"),
                     {"arp", "advertised"}),
              arpAdvertisedHead + arpAdvertisedTotal(0));
}

TEST(ArpAdvertised, RefusesInvalidValues) {
    EXPECT_EQ(arpAdvertised.refusedFilter({"--ip", "10.0.0.256"}),
              "--ip: '10.0.0.256': expected an IPv4 or IPv6 address such as 10.0.0.1 or "
              "2001:db8::1");
    EXPECT_EQ(arpAdvertised.refusedFilter({"--ip", ""}).substr(0, 8), "--ip: ''");
    EXPECT_EQ(arpAdvertised.refusedFilter({"--vni", "-1"}).substr(0, 5), "--vni");
    EXPECT_EQ(arpAdvertised.refusedFilter({"--mac", "x"}).substr(0, 12), "--mac: 'x': ");
    arpAdvertised.knowsNone({"--switch", "--dest", "--vtep"});
}

TEST(ArpAdvertised, EntriesOfOneVniCanAgree) {
    auto const twice = snapshotWith("advertised", R"({ "vnis": {
        "10":  { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:01", "changes": 3 } } },
        "010": { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:01", "changes": 3 } } } } })");
    EXPECT_EQ(answer(twice, {"arp", "advertised"}),
              std::string(arpAdvertisedHead) +
                  "10       10.0.0.1        0200.0000.0001     3        \n" +
                  arpAdvertisedTotal(1));
}

TEST(ArpAdvertised, EntriesOfOneVniThatDisagreeAreOneLineAndNoTable) {
    struct Disagreement {
        char const * values;
        char const * first;
        char const * second;
    };

    for (auto const & [values, first, second] :
         {Disagreement{"MAC address 02:00:00:00:00:01 and 02:00:00:00:00:02",
                       R"({"mac":"02:00:00:00:00:01"})", R"({"mac":"02:00:00:00:00:02"})"},
          Disagreement{"preference 1 and 2", R"({"mac":"02:00:00:00:00:01","preference":1})",
                       R"({"mac":"02:00:00:00:00:01","preference":2})"},
          Disagreement{"changes 1 and 2", R"({"mac":"02:00:00:00:00:01","changes":1})",
                       R"({"mac":"02:00:00:00:00:01","changes":2})"}}) {
        auto const disagreeing = snapshotWith(
            "advertised", R"({"vnis":{"10":{"arp":{"10.0.0.1":)" + std::string(first) +
                              R"(}},"10\u001b":{"arp":{"10.0.0.1":)" + second + "}}}}");
        std::string const expected =
            R"(arp advertised: entries '10' and '10\x1b' of VNI 10 disagree about 10.0.0.1: )" +
            std::string(values);
        for (char const * form : {"--dotted", "--json", "--pretty"}) {
            EXPECT_EQ(failure(disagreeing, {"arp", "advertised", form}), expected);
        }
        EXPECT_EQ(answer(disagreeing, {"arp", "advertised", "--ip", "10.0.0.2"}),
                  arpAdvertisedHead + arpAdvertisedTotal(0));
    }
}

TEST(ArpAdvertised, OfSeveralDisagreementsThatOfTheLowestVniAndAddressIsReported) {
    auto const disagreeing = snapshotWith("advertised", R"({ "vnis": {
        "9":   { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:01" } } },
        "20":  { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:01" } } },
        "020": { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:02" } } },
        "10":  { "arp": { "10.0.0.9": { "mac": "02:00:00:00:00:01" },
                          "10.0.0.10": { "mac": "02:00:00:00:00:01" } } },
        "010": { "arp": { "10.0.0.9": { "mac": "02:00:00:00:00:02" },
                          "10.0.0.10": { "mac": "02:00:00:00:00:02" } } } } })");
    EXPECT_EQ(failure(disagreeing, {"arp", "advertised"}),
              "arp advertised: entries '010' and '10' of VNI 10 disagree about 10.0.0.9: "
              "MAC address 02:00:00:00:00:02 and 02:00:00:00:00:01");
    EXPECT_EQ(failure(disagreeing, {"arp", "advertised", "--vni", "20"}),
              "arp advertised: entries '020' and '20' of VNI 20 disagree about 10.0.0.1: "
              "MAC address 02:00:00:00:00:02 and 02:00:00:00:00:01");
    EXPECT_EQ(failure(disagreeing, {"arp", "advertised", "--ip", "10.0.0.10"}),
              "arp advertised: entries '010' and '10' of VNI 10 disagree about 10.0.0.10: "
              "MAC address 02:00:00:00:00:02 and 02:00:00:00:00:01");
    EXPECT_EQ(
        failure(disagreeing, {"model", "--of", "arp advertised", "--vni", "20"}),
        "model --of 'arp advertised': entries '020' and '20' of VNI 20 disagree about 10.0.0.1: "
        "MAC address 02:00:00:00:00:02 and 02:00:00:00:00:01");
}

TEST(ArpAdvertised, AnInvalidEntryIsReportedBeforeADisagreement) {
    auto const both = snapshotWith("advertised", R"({ "vnis": {
        "10":       { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:01" } } },
        "010":      { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:02" } } },
        "16777216": { "arp": { "10.0.0.1": { "mac": "02:00:00:00:00:01" } } } } })");
    EXPECT_EQ(failure(both, {"arp", "advertised"}),
              "arp advertised: entry '16777216': expected a VNI from 0 to 16777215");
}
