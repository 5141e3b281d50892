#include "tests/live/Command.h"
#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

/// Servers whose schema is an older version of `hardware_vtep`: that of Open vSwitch, cut down.
namespace {

/// Writes a schema without the tables and columns in the further arguments.
constexpr char const * cutSchema = R"(
import json, sys
schema = json.load(open("/usr/share/openvswitch/vtep.ovsschema"))
del schema["cksum"]
schema["version"] = "1.2.0"
for what in sys.argv[2:]:
    table, _, column = what.partition(".")
    if not column:
        del schema["tables"][table]
        continue
    del schema["tables"][table]["columns"][column]
    for index in schema["tables"][table].get("indexes", []):
        if column in index:
            index.remove(column)
json.dump(schema, open(sys.argv[1], "w"))
)";

class OldSchema : public testing::Test {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::database); }

    /// A database without these tables and columns, with a MAC address at a locator.
    std::unique_ptr<OvsdbLab> databaseWithout(Words const & missing) const {
        auto const schema = folder_.file("schema");
        outputOf(Words{"/usr/bin/python3", "-c", cutSchema, schema} + missing);
        outputOf({"ovsdb-tool", "create", folder_.file("db"), schema});
        auto lab = std::make_unique<OvsdbLab>(Words{"--from", folder_.file("db")});
        lab->transact(R"(
            {"op":"insert","table":"Logical_Switch","uuid-name":"s",
             "row":{"name":"blue","tunnel_key":100}},
            {"op":"insert","table":"Physical_Locator","uuid-name":"l",
             "row":{"dst_ip":"10.0.0.2","encapsulation_type":"vxlan_over_ipv4"}},
            {"op":"insert","table":"Ucast_Macs_Remote",
             "row":{"MAC":"02:00:00:00:00:01","logical_switch":["named-uuid","s"],
                    "locator":["named-uuid","l"],"ipaddr":""}})");
        return lab;
    }

    Folder folder_;
};

constexpr char const * row = "100         0200.0000.0001  10.0.0.2";

} // namespace

TEST_F(OldSchema, WithoutArpSourcesNothingIsMissing) {
    auto const lab = databaseWithout({"Arp_Sources_Local", "Arp_Sources_Remote"});
    auto const printed = shown({"--ovsdb", lab->remote(), "mac", "advertised"});
    EXPECT_NE(printed.find(row), std::string::npos) << printed;
}

TEST_F(OldSchema, WithoutRoutersTheCommandsOfRoutersHaveARemark) {
    auto const lab = databaseWithout({"Arp_Sources_Local", "Arp_Sources_Remote", "Logical_Router"});
    auto const finished = ask({"--ovsdb", lab->remote(), "router", "detail"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "vxshow: " + lab->remote() +
                                ": its schema, version 1.2.0, has no Logical_Router: no "
                                "routers are shown\n");
}

TEST_F(OldSchema, WithoutRoutersNothingIsMissingAmongMacAddresses) {
    auto const lab = databaseWithout({"Arp_Sources_Local", "Arp_Sources_Remote", "Logical_Router"});
    for (Words const & filter : {Words{}, Words{"--vni", "100"}}) {
        auto const finished = ask(Words{"--ovsdb", lab->remote(), "mac", "advertised"} + filter);
        EXPECT_EQ(finished.status, 0);
        EXPECT_NE(finished.out.find(row), std::string::npos) << finished.out;
        EXPECT_EQ(finished.err, "");
    }
}

TEST_F(OldSchema, WithoutKeysOfLocatorsThereIsARemark) {
    auto const lab = databaseWithout({"Physical_Locator.tunnel_key"});
    auto const finished = ask({"--ovsdb", lab->remote(), "mac", "advertised"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.out.find(row), std::string::npos) << finished.out;
    EXPECT_EQ(finished.err,
              "vxshow: " + lab->remote() +
                  ": its schema, version 1.2.0, has no Physical_Locator.tunnel_key: entries of a "
                  "logical switch without a tunnel_key are left out\n");
}

TEST_F(OldSchema, WithoutReplicationModeNothingIsMissing) {
    auto const lab = databaseWithout({"Logical_Switch.replication_mode"});
    shown({"--ovsdb", lab->remote(), "mac", "advertised"});
}

TEST_F(OldSchema, WithoutWhatEverythingNeedsTheVersionIsNamed) {
    auto const lab = databaseWithout({"Physical_Port.vlan_bindings"});
    auto const finished = ask({"--ovsdb", lab->remote(), "mac", "advertised"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_TRUE(finished.err.starts_with("vxshow: " + lab->remote() +
                                         ": no such schema: answer for Physical_Port: "))
        << finished.err;
    EXPECT_TRUE(finished.err.ends_with("; its version is 1.2.0\n")) << finished.err;
}
