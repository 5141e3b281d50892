#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"
#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/Failure.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using enum Table;
using namespace std::chrono_literals;

Deadline databaseTimePassed() {
    return {Deadline::Clock::now() - 1s, 5s};
}

Answer readAnswer(Database const & database, Deadline const & deadline) {
    return readDatabase(system::FileBytes::copyOf(database.answer()), Request::whole(), {"lab"}, {},
                        deadline);
}

std::string timeOver(Database const & database) {
    try {
        readAnswer(database, databaseTimePassed());
    } catch (TimedOut const & failure) {
        return failure.what();
    }
    return "accepted";
}

constexpr char const * noDatabaseAnswer = "time limit: no answer within 5 s";

std::string databaseMac(unsigned number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "02:00:00:00:%02x:%02x", number >> 8 & 0xFF,
                  number & 0xFF);
    return text.data();
}

std::string list(std::vector<std::string> const & elements) {
    std::string text;
    for (auto const & element : elements) {
        text.append(text.empty() ? "" : ",").append(element);
    }
    return "[" + text + "]";
}

std::string rowsFrom(unsigned first, unsigned count) {
    std::vector<std::string> references;
    for (unsigned number = first; number < first + count; ++number) {
        references.push_back(row(number));
    }
    return R"(["set",)" + list(references) + "]";
}

std::string locatorRow(unsigned number, std::string const & ip,
                       std::string const & key = R"(["set",[]])") {
    return R"({"_uuid":)" + row(number) + R"(,"dst_ip":)" + jsonText(ip) + R"(,"tunnel_key":)" +
           key + "}";
}

std::string setRow(unsigned number, std::string const & locators) {
    return R"({"_uuid":)" + row(number) + R"(,"locators":)" + locators + "}";
}

std::string switchRow(std::string const & name, std::string const & ports) {
    return R"({"name":")" + name + R"(","ports":)" + ports + R"(,"tunnel_ips":"10.0.0.1"})";
}

/// A port that is bound to red in that many VLANs.
std::string portRow(unsigned number, unsigned vlans) {
    std::vector<std::string> pairs;
    for (unsigned vlan = 1; vlan <= vlans; ++vlan) {
        pairs.push_back("[" + std::to_string(vlan) + "," + row(1) + "]");
    }
    return R"({"_uuid":)" + row(number) + R"(,"name":"p","vlan_bindings":["map",)" + list(pairs) +
           "]}";
}

/// A router with an address in red.
std::string routerRow(unsigned number) {
    return R"({"name":"r)" + std::to_string(number) +
           R"(","static_routes":["map",[]],"switch_binding":["map",[["10.0.0.1/8",)" + row(1) +
           "]]]}";
}

void addRouters(Database & database, unsigned count) {
    for (unsigned number = 0; number < count; ++number) {
        database[logicalRouter].push_back(routerRow(number));
    }
}

/// Switches with a port in red each, that all have the VTEP 10.0.0.1.
void addSwitches(Database & database, unsigned count) {
    for (unsigned number = 0; number < count; ++number) {
        database[physicalSwitch].push_back(
            switchRow("s" + std::to_string(number), row(1000 + number)));
        database[physicalPort].push_back(portRow(1000 + number, 1));
    }
}

/// The set of row 22, with that many locators.
void addSet(Database & database, unsigned count) {
    for (unsigned number = 0; number < count; ++number) {
        database[physicalLocator].push_back(
            locatorRow(1000 + number, "10.1.0." + std::to_string(number + 1)));
    }
    database[physicalLocatorSet].push_back(setRow(22, rowsFrom(1000, count)));
}

} // namespace

TEST(HardwareVtepEffort, ARouterRunsOnceOnASwitchHoweverOftenItsLogicalSwitchIsBound) {
    Database once;
    once[physicalSwitch] = {switchRow("leaf1", row(1000))};
    once[physicalPort] = {portRow(1000, 1)};
    addRouters(once, 2);
    Database often = once;
    often[physicalSwitch] = {switchRow("leaf1", rowsFrom(1000, 2))};
    often[physicalPort] = {portRow(1000, 3), portRow(1001, 2)};
    auto const state = readAnswer(often).facts;
    EXPECT_EQ(state.switches.at("leaf1").routers, (std::set<std::string>{"r0", "r1"}));
    EXPECT_EQ(state.local.at("leaf1").vnis, std::vector{Vxlan::Vni(5001)});
    EXPECT_EQ(state, readAnswer(once).facts);
}

// The deadline has passed, so the result does not depend on the speed of the machine: the steps
// before it is checked suffice for the sum of bindings and routers, but not for their product.
TEST(HardwareVtepEffort, ManyBindingsOfALogicalSwitchWithManyRoutersAreNotMultiplied) {
    constexpr unsigned many = 200;
    Database database;
    database[physicalSwitch] = {switchRow("leaf1", rowsFrom(1000, many))};
    database[physicalPort] = {portRow(1000, many)};
    for (unsigned number = 1; number < many; ++number) {
        database[physicalPort].push_back(portRow(1000 + number, 1));
    }
    addRouters(database, many);
    EXPECT_EQ(readAnswer(database, databaseTimePassed()).facts.switches.at("leaf1").routers.size(),
              many);
}

TEST(HardwareVtepEffort, RowsThatFloodToOneSetAreOneFloodList) {
    Database once;
    once.multicast(mcastMacsLocal, "unknown-dst", 1, 21);
    once.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    Database often = once;
    for (int times = 0; times < 3; ++times) {
        often.multicast(mcastMacsLocal, "unknown-dst", 1, 21);
        often.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    }
    auto const answer = readAnswer(often);
    EXPECT_EQ(answer.facts, readAnswer(once).facts);
    EXPECT_EQ(answer.facts.remote.floods.size(), 2);
    EXPECT_EQ(answer.findings.warning(),
              "1 local entry at a VTEP of no switch: Mcast_Macs_Local \"unknown-dst\" in VNI 5001 "
              "at 10.0.0.2");
    EXPECT_EQ(answer.findings.warning(), readAnswer(once).findings.warning());
}

TEST(HardwareVtepEffort, ARowThatFloodsToTheSetElsewhereIsAnotherFloodList) {
    Database database;
    database[logicalSwitch].push_back(R"({"_uuid":)" + row(3) +
                                      R"(,"name":"green","tunnel_key":5002})");
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    database.multicast(mcastMacsRemote, "unknown-dst", 3, 21);
    database.multicast(mcastMacsRemote, "01:00:5e:01:02:03", 1, 21);
    database.multicast(mcastMacsLocal, "unknown-dst", 1, 21);
    auto const state = readAnswer(database).facts;
    EXPECT_EQ(state.remote.floods.size(), 6);
    EXPECT_EQ(state.local.at("leaf1").floods.size(), 1);
    EXPECT_EQ(state.local.at("lab").floods.size(), 1);
}

TEST(HardwareVtepEffort, EachIpAddressOfAGroupIsKnownWhereTheGroupIsFlooded) {
    Database database;
    for (auto const * ip : {"239.1.2.3", "239.1.2.4", ""}) {
        database.multicast(mcastMacsLocal, "01:00:5e:01:02:03", 1, 21, ip);
    }
    auto const state = readAnswer(database).facts;
    EXPECT_EQ(state.local.at("leaf1").bindings.size(), 2);
    EXPECT_EQ(state.local.at("lab").bindings, state.local.at("leaf1").bindings);
    EXPECT_EQ(state.remote.bindings.size(), 0);
}

TEST(HardwareVtepEffort, ABadLocatorIsCountedOnceForEachSet) {
    Database database;
    database[physicalLocator].push_back(locatorRow(14, "nowhere"));
    database[physicalLocatorSet] = {setRow(21, rowsFrom(12, 3)), setRow(22, rowsFrom(13, 2)),
                                    setRow(23, rowsFrom(13, 2))};
    for (auto const * mac : {"unknown-dst", "unknown-dst", "01:00:5e:01:02:03"}) {
        database.multicast(mcastMacsRemote, mac, 1, 22);
        database.multicast(mcastMacsRemote, mac, 1, 21);
    }
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.floods.size(), 4);
    EXPECT_EQ(answer.findings.warning(),
              "2 entries left out, the first: Physical_Locator_Set "
              "00000000-0000-4000-8000-000000000021: dst_ip \"nowhere\", expected an IPv4 address "
              "such as 10.0.0.1");
}

TEST(HardwareVtepEffort, ALocatorWithoutAVniIsCountedOnceForEachSet) {
    Database database;
    database[physicalLocator].push_back(locatorRow(14, "10.0.0.4", "-1"));
    database[physicalLocatorSet] = {setRow(21, rowsFrom(12, 3))};
    for (auto const * mac : {"unknown-dst", "unknown-dst", "01:00:5e:01:02:03"}) {
        database.multicast(mcastMacsRemote, mac, 1, 21);
        database.multicast(mcastMacsRemote, mac, 2, 21);
    }
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.floods.size(), 8);
    EXPECT_EQ(answer.findings.warning(),
              "2 entries left out, the first: Physical_Locator_Set "
              "00000000-0000-4000-8000-000000000021: tunnel_key -1 of 10.0.0.4, expected a VNI "
              "from 0 to 16777215");
    database[physicalLocatorSet] = {setRow(21, rowsFrom(11, 1))};
    EXPECT_EQ(readAnswer(database).findings.warning(),
              "1 entry left out: Physical_Locator_Set 00000000-0000-4000-8000-000000000021: "
              "tunnel_key of 10.0.0.1 missing, expected a VNI from 0 to "
              "16777215");
}

TEST(HardwareVtepEffort, AFloodListInALogicalSwitchWithAnInvalidKeyIsOneEntry) {
    Database database;
    database[logicalSwitch].push_back(R"({"_uuid":)" + row(3) +
                                      R"(,"name":"odd","tunnel_key":-1})");
    database.multicast(mcastMacsRemote, "unknown-dst", 3, 21);
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.remote.floods.size(), 0);
    EXPECT_EQ(answer.findings.warning(),
              "1 entry left out: Mcast_Macs_Remote \"unknown-dst\" in \"odd\": tunnel_key -1, "
              "expected a VNI from 0 to 16777215");
}

TEST(HardwareVtepEffort, FewRowsAreReadAfterTheDeadline) {
    Database database;
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12);
    EXPECT_EQ(readAnswer(database, databaseTimePassed()).facts, readAnswer(database).facts);
}

TEST(HardwareVtepEffort, ManyRowsAreNotReadAfterTheDeadline) {
    Database database;
    for (unsigned number = 0; number < 5000; ++number) {
        database.unicast(ucastMacsRemote, databaseMac(number), 1, 12);
    }
    EXPECT_EQ(timeOver(database), noDatabaseAnswer);
    EXPECT_EQ(readAnswer(database, Deadline::in(1h)).facts.remote.macs.size(), 5000);
}

TEST(HardwareVtepEffort, OneRowOfManyReferencesIsNotReadAfterTheDeadline) {
    Database database;
    database[physicalSwitch] = {switchRow("leaf1", rowsFrom(1000, 5000))};
    EXPECT_EQ(timeOver(database), noDatabaseAnswer);
    Database bindings;
    bindings[physicalPort] = {portRow(1000, 5000)};
    EXPECT_EQ(timeOver(bindings), noDatabaseAnswer);
}

TEST(HardwareVtepEffort, ManyFloodTargetsOfFewRowsAreNotJoinedAfterTheDeadline) {
    Database database;
    addSet(database, 100);
    for (unsigned number = 0; number < 100; ++number) {
        database.multicast(mcastMacsRemote, databaseMac(number), 1, 22);
    }
    EXPECT_EQ(timeOver(database), noDatabaseAnswer);
    EXPECT_EQ(readAnswer(database).facts.remote.floods.size(), 10000);
}

TEST(HardwareVtepEffort, ManySwitchesAtOneVtepAreNotJoinedAfterTheDeadline) {
    Database database;
    addSwitches(database, 100);
    for (unsigned number = 0; number < 100; ++number) {
        database.unicast(ucastMacsLocal, databaseMac(number), 1, 11);
    }
    EXPECT_EQ(timeOver(database), noDatabaseAnswer);
    auto const state = readAnswer(database).facts;
    EXPECT_EQ(state.local.at("s0").macs.size(), 100);
    EXPECT_EQ(state.local.at("s99"), state.local.at("s0"));
}

TEST(HardwareVtepEffort, ManyRoutersOnManySwitchesAreNotJoinedAfterTheDeadline) {
    Database database;
    addSwitches(database, 100);
    addRouters(database, 100);
    EXPECT_EQ(timeOver(database), noDatabaseAnswer);
    EXPECT_EQ(readAnswer(database).facts.switches.at("s99").routers.size(), 100);
}

TEST(HardwareVtepEffort, ManyLogicalSwitchesAreNotSurveyedAfterTheDeadline) {
    std::vector<std::string> rows;
    for (unsigned number = 1; number <= 5000; ++number) {
        rows.push_back(R"({"_uuid":)" + row(number) + R"(,"name":"n","tunnel_key":)" +
                       std::to_string(number) + "}");
    }
    auto const survey = system::FileBytes::copyOf(R"([{"rows":)" + list(rows) + "}]");
    EXPECT_EQ(logicalSwitchesOf(Vxlan::Vni(7), survey).size(), 1);
    EXPECT_THROW(logicalSwitchesOf(Vxlan::Vni(7), survey, databaseTimePassed()), TimedOut);
}

// The parser indexes a whole answer before it gives the first value.
TEST(HardwareVtepEffort, ALongAnswerIsNotIndexedAfterTheDeadline) {
    auto const blanks = [](std::size_t count) {
        return system::FileBytes::copyOf("[" + std::string(count, ' ') + "]");
    };
    auto const read = [&](std::size_t count) {
        readDatabase(blanks(count), Request::whole(), {"lab"}, {}, databaseTimePassed());
    };
    EXPECT_THROW(read(2 << 20), TimedOut);
    EXPECT_THROW(read(1 << 10), AnswerError);
}

// That takes many times as long as reading the answer.
TEST(HardwareVtepEffort, ThePlaceOfAMistakeIsNotSearchedAfterTheDeadline) {
    auto const broken = [](unsigned count) {
        std::string text = "[";
        for (unsigned number = 0; number < count; ++number) {
            text.append("1,");
        }
        return system::FileBytes::copyOf(text + "\"");
    };
    auto const read = [&](unsigned count) {
        readDatabase(broken(count), Request::whole(), {"lab"}, {}, databaseTimePassed());
    };
    EXPECT_THROW(read(5000), TimedOut);
    EXPECT_THROW(read(50), AnswerError);
}

} // namespace vxshow::test
