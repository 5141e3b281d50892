#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"
#include "vxshow/sources/Failure.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using enum Table;

constexpr std::size_t noFactLimit = 1000;

Answer readWithin(std::size_t maxFacts, Database const & database) {
    return readDatabase(system::FileBytes::copyOf(database.answer()), Request::whole(),
                        {.name = "lab", .maxFacts = maxFacts});
}

bool isWithin(std::size_t maxFacts, Database const & database) {
    try {
        readWithin(maxFacts, database);
    } catch (TooManyFacts const &) {
        return false;
    }
    return true;
}

/// How many facts the database comes to: the least limit that it is within.
std::size_t factsOf(Database const & database) {
    std::size_t facts = 1;
    while (facts < noFactLimit && !isWithin(facts, database)) {
        ++facts;
    }
    return facts;
}

/// The VNI of the logical switch red, which the remote side of every answer knows.
constexpr std::size_t ofRed = 1;

/// Switches that share the VTEP 10.0.0.1 and the port of row 31, with leaf1 three in all.
void addSharing(Database & database) {
    for (auto const * name : {"leaf1", "leaf2", "leaf3"}) {
        database[physicalSwitch].push_back(R"({"name":")" + std::string(name) + R"(","ports":)" +
                                           row(31) + R"(,"tunnel_ips":"10.0.0.1"})");
    }
    database[physicalSwitch].erase(database[physicalSwitch].begin());
}

void addPort(Database & database) {
    database[physicalPort].push_back(
        R"({"_uuid":)" + row(31) + R"(,"name":"p","vlan_bindings":["map",[[1,)" + row(1) + "]]]}");
}

} // namespace

TEST(HardwareVtepFactLimit, AUnicastEntryIsOneFactAndWithAnAddressTwo) {
    Database database;
    EXPECT_EQ(factsOf(database), ofRed);
    database.unicast(ucastMacsRemote, "02:00:00:00:00:01", 1, 12);
    EXPECT_EQ(factsOf(database), ofRed + 1);
    database.unicast(ucastMacsRemote, "02:00:00:00:00:02", 1, 12, "10.1.1.1");
    EXPECT_EQ(factsOf(database), ofRed + 3);
}

TEST(HardwareVtepFactLimit, ALocalEntryCountsForEachSwitchAtItsVtep) {
    Database database;
    addSharing(database);
    database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 11);
    EXPECT_EQ(factsOf(database), ofRed + 3);
    database.unicast(ucastMacsLocal, "02:00:00:00:00:02", 1, 11, "10.1.1.1");
    EXPECT_EQ(factsOf(database), ofRed + 9);
}

TEST(HardwareVtepFactLimit, ALocalEntryAtTheVtepOfNoSwitchCountsOnce) {
    Database database;
    database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 12);
    EXPECT_EQ(factsOf(database), ofRed + 1);
}

TEST(HardwareVtepFactLimit, AFloodListCountsEachOfItsMembers) {
    Database database;
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    EXPECT_EQ(factsOf(database), ofRed + 2);
    database.multicast(mcastMacsRemote, "01:00:5e:01:02:03", 1, 21, "239.1.2.3");
    EXPECT_EQ(factsOf(database), ofRed + 2 + 2 + 1);
}

TEST(HardwareVtepFactLimit, RowsThatFloodToOneSetAlikeCountOnce) {
    Database database;
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    EXPECT_EQ(factsOf(database), ofRed + 2);
}

TEST(HardwareVtepFactLimit, ALocalFloodListCountsForEachSwitchAtAMember) {
    Database database;
    addSharing(database);
    database.multicast(mcastMacsLocal, "unknown-dst", 1, 21);
    EXPECT_EQ(factsOf(database), ofRed + 3 + 1);
}

TEST(HardwareVtepFactLimit, AVniAndARouterCountForEachSwitchThatHasThem) {
    Database database;
    addSharing(database);
    addPort(database);
    EXPECT_EQ(factsOf(database), ofRed + 3);
    database[logicalRouter] = {
        R"({"name":"r1","static_routes":["map",[["10.2.0.0/16","10.0.0.9"]]],)"
        R"("switch_binding":["map",[["10.1.0.1/16",)" +
        row(1) + "]]]}"};
    EXPECT_EQ(factsOf(database), ofRed + 3 + 2 + 3);
}

TEST(HardwareVtepFactLimit, EachSwitchCountsALongRouterNameOnceMoreFor64Bytes) {
    Database database;
    addSharing(database);
    addPort(database);
    auto const named = [&](std::size_t bytes) {
        auto with = database;
        with[logicalRouter] = {R"({"name":")" + std::string(bytes, 'r') +
                               R"(","static_routes":["map",[]],"switch_binding":["map",)"
                               R"([["10.1.0.1/16",)" +
                               row(1) + "]]]}"};
        return factsOf(with);
    };
    EXPECT_EQ(named(63), ofRed + 3 + 1 + 3);
    EXPECT_EQ(named(64), ofRed + 3 + 1 + 3 * 2);
    EXPECT_EQ(named(640), ofRed + 3 + 1 + 3 * 11);
}

TEST(HardwareVtepFactLimit, TheAnswerIsTheSameAtTheLimit) {
    Database database;
    database.multicast(mcastMacsRemote, "unknown-dst", 1, 21);
    EXPECT_EQ(readWithin(ofRed + 2, database).facts, readWithin(noFactLimit, database).facts);
}

} // namespace vxshow::test
