#include "tests/unit/vxshow/sources/JoiningMemory.h"
#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using enum Table;

void expectBounded(std::string const & shape, Database const & database) {
    expectWithinBounds(shape, database.answer(),
                       [](std::string const & answer) { return readAnswer(answer); });
}

std::string numberedMac(unsigned number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "02:00:00:%02x:%02x:%02x", number >> 16 & 0xFF,
                  number >> 8 & 0xFF, number & 0xFF);
    return text.data();
}

std::string numberedIp(unsigned number) {
    return "10." + std::to_string(number >> 16 & 0xFF) + "." + std::to_string(number >> 8 & 0xFF) +
           "." + std::to_string(number & 0xFF);
}

/// `["set",[…]]` or `["map",[…]]` of `count` elements, each made from its number.
template <class Make>
std::string collection(std::string const & word, unsigned count, Make && make) {
    std::string text = "[\"" + word + "\",[";
    for (unsigned number = 0; number < count; ++number) {
        text.append(number == 0 ? "" : ",").append(make(number));
    }
    return text + "]]";
}

std::string rowsOf(unsigned first, unsigned count) {
    return collection("set", count, [&](unsigned number) { return row(first + number); });
}

void addLocators(Database & database, unsigned first, unsigned count) {
    for (unsigned number = 0; number < count; ++number) {
        database[physicalLocator].push_back(R"({"_uuid":)" + row(first + number) +
                                            R"(,"dst_ip":")" + numberedIp(number + 256) +
                                            R"(","tunnel_key":["set",[]]})");
    }
}

void addLogicalSwitches(Database & database, unsigned first, unsigned count,
                        std::string const & key = "") {
    for (unsigned number = 0; number < count; ++number) {
        database[logicalSwitch].push_back(
            R"({"_uuid":)" + row(first + number) + R"(,"name":"ls)" + std::to_string(number) +
            R"(","tunnel_key":)" + (key.empty() ? std::to_string(6000 + number) : key) + "}");
    }
}

/// Switches without an address, that all have the port of row 31.
void addSwitchesAtPort31(Database & database, unsigned count) {
    for (unsigned number = 0; number < count; ++number) {
        database[physicalSwitch].push_back(R"({"name":"s)" + std::to_string(number) +
                                           R"(","ports":)" + row(31) +
                                           R"(,"tunnel_ips":["set",[]]})");
    }
}

/// The port of row 31, bound to logical switches from row `first` on.
void addPort31(Database & database, unsigned first, unsigned count) {
    database[physicalPort].push_back(R"({"_uuid":)" + row(31) + R"(,"name":"p","vlan_bindings":)" +
                                     collection("map", count,
                                                [&](unsigned number) {
                                                    return "[" + std::to_string(number) + "," +
                                                           row(first + number) + "]";
                                                }) +
                                     "}");
}

void addRouter(Database & database, std::string const & name, std::string const & bindings,
               std::string const & routes = R"(["map",[]])") {
    database[logicalRouter].push_back(R"({"name":")" + name + R"(","static_routes":)" + routes +
                                      R"(,"switch_binding":)" + bindings + "}");
}

std::string boundToRed(unsigned number) {
    return R"(["map",[[")" + numberedIp(number) + R"(/8",)" + row(1) + "]]]";
}

} // namespace

TEST(HardwareVtepMemory, OfMacs) {
    Database database;
    for (unsigned number = 1; number <= 50'000; ++number) {
        database.unicast(ucastMacsRemote, numberedMac(50'001 - number), 1, 12);
    }
    expectBounded("MACs", database);
}

TEST(HardwareVtepMemory, OfMacsWithIpAddresses) {
    Database database;
    for (unsigned number = 1; number <= 50'000; ++number) {
        database.unicast(ucastMacsLocal, numberedMac(number), 1, 11, numberedIp(50'001 - number));
    }
    expectBounded("MACs with IP addresses", database);
}

TEST(HardwareVtepMemory, OfMacsAtAnAddressOfManySwitches) {
    Database database;
    for (unsigned number = 0; number < 200; ++number) {
        database[physicalSwitch].push_back(R"({"name":"s)" + std::to_string(number) +
                                           R"(","ports":["set",[]],"tunnel_ips":"10.0.0.1"})");
    }
    for (unsigned number = 1; number <= 500; ++number) {
        database.unicast(ucastMacsLocal, numberedMac(number), 1, 11, numberedIp(number));
    }
    expectBounded("MACs at an address of 200 switches", database);
}

TEST(HardwareVtepMemory, OfManyRowsThatFloodToOneSetOfManyLocators) {
    Database database;
    addLocators(database, 1000, 300);
    database[physicalLocatorSet].push_back(R"({"_uuid":)" + row(22) + R"(,"locators":)" +
                                           rowsOf(1000, 300) + "}");
    for (unsigned number = 1; number <= 300; ++number) {
        database.multicast(mcastMacsRemote, numberedMac(number), 1, 22, numberedIp(number));
    }
    expectBounded("300 rows that flood to 300 locators", database);
}

TEST(HardwareVtepMemory, OfManySetsOfLocators) {
    Database database;
    addLogicalSwitches(database, 100'000, 300);
    addLocators(database, 1000, 100);
    for (unsigned number = 0; number < 300; ++number) {
        database[physicalLocatorSet].push_back(R"({"_uuid":)" + row(5000 + number) +
                                               R"(,"locators":)" + rowsOf(1000, 100) + "}");
        database.multicast(mcastMacsRemote, "unknown-dst", 100'000 + number, 5000 + number);
    }
    expectBounded("300 flood lists of 100 locators", database);
}

TEST(HardwareVtepMemory, OfTheAddressesOfAGroupInManyVnis) {
    Database database;
    for (unsigned number = 0; number < 300; ++number) {
        database[physicalLocator].push_back(R"({"_uuid":)" + row(1000 + number) +
                                            R"(,"dst_ip":"10.0.0.9","tunnel_key":)" +
                                            std::to_string(7000 + number) + "}");
    }
    database[physicalLocatorSet].push_back(R"({"_uuid":)" + row(22) + R"(,"locators":)" +
                                           rowsOf(1000, 300) + "}");
    for (unsigned number = 1; number <= 300; ++number) {
        database.multicast(mcastMacsRemote, "01:00:5e:00:00:01", 2, 22, numberedIp(number));
    }
    expectBounded("300 addresses of a group in 300 VNIs", database);
}

TEST(HardwareVtepMemory, OfRoutersOnSwitches) {
    Database database;
    addSwitchesAtPort31(database, 300);
    addPort31(database, 1, 1);
    for (unsigned number = 0; number < 300; ++number) {
        addRouter(database, "r" + std::to_string(number), boundToRed(number));
    }
    expectBounded("300 routers on 300 switches", database);
}

TEST(HardwareVtepMemory, OfVlanBindings) {
    Database database;
    addSwitchesAtPort31(database, 300);
    addLogicalSwitches(database, 100'000, 300);
    addPort31(database, 100'000, 300);
    expectBounded("300 VLAN bindings on 300 switches", database);
}

TEST(HardwareVtepMemory, OfVlanBindingsToWhatHasNoVni) {
    Database database;
    addSwitchesAtPort31(database, 2000);
    addLogicalSwitches(database, 100'000, 2000, R"(["set",[]])");
    addPort31(database, 100'000, 2000);
    expectBounded("2,000 VLAN bindings without a VNI on 2,000 switches", database);
}

TEST(HardwareVtepMemory, OfALongRouterNameOnManySwitches) {
    Database database;
    addSwitchesAtPort31(database, 300);
    addPort31(database, 1, 1);
    addRouter(database, std::string(100'000, 'r'), boundToRed(1));
    expectBounded("a router with a name of 100,000 bytes on 300 switches", database);
}

TEST(HardwareVtepMemory, OfALongRouterNameWithManyPorts) {
    Database database;
    addLogicalSwitches(database, 100'000, 300);
    addRouter(database, std::string(100'000, 'r'), collection("map", 300, [](unsigned number) {
                  return "[\"" + numberedIp(number) + "/8\"," + row(100'000 + number) + "]";
              }));
    expectBounded("a router with a name of 100,000 bytes and 300 ports", database);
}

TEST(HardwareVtepMemory, OfRoutes) {
    Database database;
    addRouter(database, "r1", boundToRed(1), collection("map", 30'000, [](unsigned number) {
                  return "[\"" + numberedIp(number) + "/32\",\"10.0.0.9\"]";
              }));
    expectBounded("routes", database);
}

TEST(HardwareVtepMemory, OfTunnelAddresses) {
    Database database;
    database[physicalSwitch].push_back(
        R"({"name":"s","ports":["set",[]],"tunnel_ips":)" +
        collection("set", 30'000,
                   [](unsigned number) { return "\"" + numberedIp(number) + "\""; }) +
        "}");
    expectBounded("addresses of one switch", database);
}

} // namespace vxshow::test
