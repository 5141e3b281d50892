#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using enum Table;

Vxlan::Vni vni(Vex::U32 number) {
    return Vxlan::Vni(number);
}

Nolt::EthAddr mac(std::string_view text) {
    return Nolt::EthAddr::fromString(text);
}

Nolt::IpAddr ip(std::string_view text) {
    return Nolt::IpAddr::fromString(text);
}

using Macs = std::vector<MacPlace>;
using Floods = std::vector<FloodTarget>;
using Bindings = std::vector<IpBinding>;

auto const quirkMac = mac("02:00:00:00:00:01");

std::string warningOf(Answer const & answer) {
    return answer.findings.warning().value_or("none");
}

} // namespace

TEST(HardwareVtepQuirks, TheVniIsThatOfTheLogicalSwitch) {
    Database database;
    // Its locator has another key, which is ignored.
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 13);
    EXPECT_EQ(readAnswer(database).facts.remote.macs,
              (Macs{{vni(5001), quirkMac, ip("10.0.0.3")}}));
}

TEST(HardwareVtepQuirks, TheVniIsThatOfTheLocatorIfTheLogicalSwitchHasNone) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 2, 13);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.macs, (Macs{{vni(5003), quirkMac, ip("10.0.0.3")}}));
    EXPECT_EQ(warningOf(answer), "none");
}

TEST(HardwareVtepQuirks, AnEntryWithoutAnyKeyIsLeftOut) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 2, 12);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.macs, Macs{});
    EXPECT_EQ(warningOf(answer),
              "1 entry left out: Ucast_Macs_Remote \"02:00:00:00:00:01\" in \"keyless\": "
              "tunnel_key missing, expected a VNI from 0 to 16777215");
}

TEST(HardwareVtepQuirks, EntriesWithAnInvalidKeyAreLeftOut) {
    for (auto const * key : {"-1", "9007199254740992", "16777216", "-9223372036854775808"}) {
        Database database;
        database[logicalSwitch].push_back(R"({"_uuid":)" + row(3) +
                                          R"(,"name":"odd","tunnel_key":)" + key + "}");
        // The locator's key is no substitute for a wrong one.
        database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 3, 13);
        auto const answer = readAnswer(database);
        EXPECT_EQ(answer.facts.local.at("leaf1"), SideFacts());
        EXPECT_EQ(warningOf(answer), "1 entry left out: Ucast_Macs_Local \"02:00:00:00:00:01\" in "
                                     "\"odd\": tunnel_key " +
                                         std::string(key) + ", expected a VNI from 0 to 16777215");
    }
}

TEST(HardwareVtepQuirks, TheLeastAndTheLargestVniAreVnis) {
    for (Vex::U32 const key : {Vxlan::Vni::min + 0, Vxlan::Vni::max + 0}) {
        Database database;
        database[logicalSwitch] = {R"({"_uuid":)" + row(1) + R"(,"name":"","tunnel_key":)" +
                                   std::to_string(key) + "}"};
        EXPECT_EQ(readAnswer(database).facts.remote.vnis, std::vector{vni(key)});
    }
}

TEST(HardwareVtepQuirks, ALocalMacBelongsToTheSwitchWithTheLocatorsAddress) {
    Database database;
    database[physicalSwitch].push_back(
        R"({"name":"leaf2","ports":["set",[]],"tunnel_ips":["set",["10.0.0.2","10.0.0.9"]]})");
    database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 12);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.local.at("leaf1").macs, Macs{});
    EXPECT_EQ(answer.facts.local.at("leaf2").macs, (Macs{{vni(5001), quirkMac, ip("10.0.0.2")}}));
}

TEST(HardwareVtepQuirks, ALocalMacAtAVtepOfSeveralSwitchesBelongsToEach) {
    Database database;
    database[physicalSwitch].push_back(
        R"({"name":"leaf2","ports":["set",[]],"tunnel_ips":["set",["10.0.0.1"]]})");
    database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 11, "192.0.2.1");
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.local.at("leaf1").macs, (Macs{{vni(5001), quirkMac, ip("10.0.0.1")}}));
    EXPECT_EQ(answer.facts.local.at("leaf2"), answer.facts.local.at("leaf1"));
    EXPECT_EQ(warningOf(answer), "none");
}

TEST(HardwareVtepQuirks, ALocalMacAtAVtepOfNoSwitchIsListedUnderTheSource) {
    Database database;
    database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 12);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.local.at("lab").macs, (Macs{{vni(5001), quirkMac, ip("10.0.0.2")}}));
    EXPECT_EQ(answer.facts.local.at("leaf1").macs, Macs{});
    EXPECT_EQ(warningOf(answer),
              "1 local entry at a VTEP of no switch: Ucast_Macs_Local \"02:00:00:00:00:01\" in "
              "\"red\" at 10.0.0.2");
}

TEST(HardwareVtepQuirks, ASwitchWithoutVtepsIsKnown) {
    Database database;
    database[physicalSwitch] = {R"({"name":"","ports":["set",[]],"tunnel_ips":["set",[]]})"};
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.local.count(""), 1);
    EXPECT_EQ(answer.facts.switches.count(""), 1);
}

TEST(HardwareVtepQuirks, AnInvalidAddressOfASwitchIsLeftOut) {
    Database database;
    database[physicalSwitch] = {
        R"({"name":"leaf1","ports":["set",[]],"tunnel_ips":["set",["","10.0.0.1","x\ny"]]})"};
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.switches.at("leaf1").vteps, (std::set<Nolt::IpGenAddr>{ip("10.0.0.1")}));
    EXPECT_EQ(warningOf(answer), "2 entries left out, the first: Physical_Switch \"leaf1\": "
                                 "tunnel_ips \"\", expected an IPv4 address such as 10.0.0.1");
}

TEST(HardwareVtepQuirks, UnknownDstIsTheFloodListOfTheZeroAddress) {
    Database database;
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    EXPECT_EQ(readAnswer(database).facts.remote.floods,
              (Floods{{vni(5001), {}, ip("10.0.0.1")}, {vni(5001), {}, ip("10.0.0.2")}}));
}

TEST(HardwareVtepQuirks, AGroupAddressHasAFloodListOfItsOwn) {
    Database database;
    database.multicast(mcastMacsRemote, "01:00:5e:01:02:03", 1, 21, "239.1.2.3");
    database[physicalLocatorSet].push_back(R"({"_uuid":)" + row(22) + R"(,"locators":)" + row(13) +
                                           "}");
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 22);
    auto const group = mac("01:00:5e:01:02:03");
    auto const remote = readAnswer(database).facts.remote;
    EXPECT_EQ(remote.floods, (Floods{{vni(5001), {}, ip("10.0.0.3")},
                                     {vni(5001), group, ip("10.0.0.1")},
                                     {vni(5001), group, ip("10.0.0.2")}}));
    EXPECT_EQ(remote.bindings, (Bindings{{vni(5001), ip("239.1.2.3"), group}}));
}

TEST(HardwareVtepQuirks, UnknownDstIsNotAUnicastAddress) {
    Database database;
    database.unicast(ucastMacsRemote, "unknown-dst", 1, 12);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.macs, Macs{});
    EXPECT_EQ(answer.findings.leftOut.count(), 1);
}

TEST(HardwareVtepQuirks, OnlyTheMemberOfAFloodListWithoutAVniIsLeftOut) {
    Database database;
    database[physicalLocatorSet] = {R"({"_uuid":)" + row(21) + R"(,"locators":["set",[)" + row(11) +
                                    "," + row(13) + "]]}"};
    database.multicast(mcastMacsRemote, "unknown-dst", 2, 21);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.floods, (Floods{{vni(5003), {}, ip("10.0.0.3")}}));
    EXPECT_EQ(answer.findings.leftOut.count(), 1);
}

TEST(HardwareVtepQuirks, AMacAddressInUpperCaseIsTheSameAddress) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:0A:0b", 1, 12);
    database.unicast(ucastMacsRemote, "02:00:00:00:0a:0B", 1, 12);
    EXPECT_EQ(readAnswer(database).facts.remote.macs,
              (Macs{{vni(5001), mac("02:00:00:00:0a:0b"), ip("10.0.0.2")}}));
}

TEST(HardwareVtepQuirks, EqualRowsAreOneEntry) {
    Database database;
    for (int times = 0; times < 3; ++times) {
        database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12, "192.0.2.1");
        database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    }
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.macs.size(), 1);
    EXPECT_EQ(answer.facts.remote.bindings.size(), 1);
    EXPECT_EQ(answer.facts.remote.floods.size(), 2);
    EXPECT_EQ(warningOf(answer), "none");
}

TEST(HardwareVtepQuirks, SeveralLocatorsOfAMacAddressAreSeveralPlaces) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12);
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 11, "192.0.2.1");
    EXPECT_EQ(readAnswer(database).facts.remote.macs,
              (Macs{{vni(5001), quirkMac, ip("10.0.0.1")}, {vni(5001), quirkMac, ip("10.0.0.2")}}));
}

TEST(HardwareVtepQuirks, AnEntryWithAnInvalidMacIsLeftOut) {
    for (auto const * text : {"not a mac", "", "02:00:00:00:00:01 ", "00:00:00:00:00:00"}) {
        Database database;
        database.unicast(ucastMacsRemote, text, 1, 12, "192.0.2.1");
        auto const answer = readAnswer(database);
        EXPECT_EQ(answer.facts.remote.macs, Macs{});
        EXPECT_EQ(answer.facts.remote.bindings, Bindings{});
        auto const quoted = '"' + std::string(text) + '"';
        EXPECT_EQ(warningOf(answer),
                  "1 entry left out: Ucast_Macs_Remote " + quoted + " in \"red\": MAC " + quoted +
                      ", expected an Ethernet address such as 00:1c:73:0a:0b:0c");
    }
}

TEST(HardwareVtepQuirks, AnEntryWithAnInvalidVtepIsLeftOut) {
    for (auto const * text : {"", "10.0.0", "0.0.0.0", "2001:db8::1", "10.0.0.1\n"}) {
        Database database;
        database[physicalLocator].push_back(R"({"_uuid":)" + row(14) + R"(,"dst_ip":)" +
                                            jsonText(text) + R"(,"tunnel_key":["set",[]]})");
        database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 14);
        auto const answer = readAnswer(database);
        EXPECT_EQ(answer.facts.local.at("leaf1").macs, Macs{});
        EXPECT_EQ(answer.findings.leftOut.count(), 1);
    }
}

TEST(HardwareVtepQuirks, AnInvalidIpaddrDoesNotAffectTheMacAddress) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12, "192.0.2.300");
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.macs.size(), 1);
    EXPECT_EQ(answer.facts.remote.bindings, Bindings{});
    EXPECT_EQ(warningOf(answer), "1 entry left out: Ucast_Macs_Remote \"02:00:00:00:00:01\" in "
                                 "\"red\": ipaddr \"192.0.2.300\", expected an IPv4 or IPv6 "
                                 "address such as 10.0.0.1 or 2001:db8::1");
}

TEST(HardwareVtepQuirks, AnEmptyIpaddrIsNeitherABindingNorAFinding) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12, "");
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.bindings, Bindings{});
    EXPECT_EQ(warningOf(answer), "none");
}

TEST(HardwareVtepQuirks, AnIpv6AddressIsABinding) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12, "2001:DB8::0:1");
    EXPECT_EQ(readAnswer(database).facts.remote.bindings,
              (Bindings{{vni(5001), Nolt::IpGenAddr::fromString("2001:db8::1"), quirkMac}}));
}

TEST(HardwareVtepQuirks, ABindingOfUnknownDstIsLeftOut) {
    Database database;
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21, "192.0.2.1");
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.bindings, Bindings{});
    EXPECT_EQ(answer.facts.remote.floods.size(), 2);
    EXPECT_EQ(answer.findings.leftOut.count(), 1);
}

TEST(HardwareVtepQuirks, AnIpAddressWithSeveralMacAddressesIsCounted) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:02", 1, 12, "192.0.2.1");
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12, "192.0.2.1");
    database.unicast(ucastMacsRemote, "02:00:00:00:00:03", 1, 12, "192.0.2.1");
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.bindings.front().mac, quirkMac);
    EXPECT_EQ(warningOf(answer),
              "1 IP address with several MAC addresses: 192.0.2.1 in VNI 5001 (remote)");
}

TEST(HardwareVtepQuirks, NamesCanContainAnythingAndAreShownPrintable) {
    Database database;
    database[logicalSwitch].push_back(R"({"_uuid":)" + row(3) + R"(,"name":)" +
                                      jsonText("\x1b[2J\n\"\xC3\xA9") + R"(,"tunnel_key":7})");
    database.unicast(ucastMacsLocal, "\x1b]0;x\x07", 3, 11);
    EXPECT_EQ(warningOf(readAnswer(database)),
              "1 entry left out: Ucast_Macs_Local \"\\x1b]0;x\\x07\" in \"\\x1b[2J\\x0a\""
              "\\xc3\\xa9\": MAC \"\\x1b]0;x\\x07\", expected an Ethernet address such as "
              "00:1c:73:0a:0b:0c");
}

TEST(HardwareVtepQuirks, TheExampleDoesNotDependOnTheOrder) {
    Database forwards;
    Database backwards;
    for (auto const * text : {"b", "a", "c"}) {
        forwards.unicast(ucastMacsRemote, text, 1, 12);
    }
    for (auto const * text : {"c", "a", "b"}) {
        backwards.unicast(ucastMacsRemote, text, 1, 12);
    }
    EXPECT_EQ(warningOf(readAnswer(forwards)), warningOf(readAnswer(backwards)));
    EXPECT_TRUE(warningOf(readAnswer(forwards))
                    .starts_with("3 entries left out, the first: Ucast_Macs_Remote \"a\" in "));
}

TEST(HardwareVtepQuirks, EscapesInTextsAreDecoded) {
    Database database;
    database[ucastMacsRemote].push_back(
        R"({"MAC":"02:00:00:00:00:\u0030\u0031","ipaddr":"192.0.2.\u0031","locator":)" + row(12) +
        R"(,"logical_switch":)" + row(1) + "}");
    auto const remote = readAnswer(database).facts.remote;
    EXPECT_EQ(remote.macs, (Macs{{vni(5001), quirkMac, ip("10.0.0.2")}}));
    EXPECT_EQ(remote.bindings, (Bindings{{vni(5001), ip("192.0.2.1"), quirkMac}}));
}

TEST(HardwareVtepQuirks, ASetOfOneCanBeWrittenAsASet) {
    Database database;
    database[logicalSwitch] = {R"({"_uuid":)" + row(1) +
                               R"(,"name":"red","tunnel_key":["set",[5009]]})"};
    database[physicalLocatorSet] = {R"({"_uuid":)" + row(21) + R"(,"locators":["set",[)" + row(12) +
                                    "]]}"};
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    EXPECT_EQ(readAnswer(database).facts.remote.floods, (Floods{{vni(5009), {}, ip("10.0.0.2")}}));
}

} // namespace vxshow::test
