#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"
#include "tests/unit/vxshow/cli/command/AccessorWalk.h"

#include <gtest/gtest.h>

/// What reflection shows is compared with what the accessors give, for whole fabrics.
namespace {

/// What `vxshow model --of` prints of the state.
std::string collected(std::string const & snapshot, std::string const & command,
                      std::vector<std::string> const & filters = {}) {
    std::vector<std::string> arguments{"model", "--of", command};
    arguments.insert(arguments.end(), filters.begin(), filters.end());
    return answer(snapshot, arguments);
}

/// Two routers on one switch, which share its entry in the map; a third of which nothing is
/// known but its ports.
constexpr char const * sharedSwitch = R"({
"switches": {"02:00:00:00:00:01": {"vteps": ["10.0.0.1"]},
             "02:00:00:00:00:02": {"vteps": ["10.0.0.2"]}},
"vteps": {"10.0.0.1": {"active": true, "switches": ["02:00:00:00:00:01"]},
          "10.0.0.2": {"active": true, "switches": ["02:00:00:00:00:02"]}},
"published": {"02:00:00:00:00:01": {"vxlancontroller/version2/logicalRouter/red": "Vxlan",
                                    "vxlancontroller/version2/logicalRouter/blue": "Vxlan"},
              "02:00:00:00:00:02": {"vxlancontroller/version2/logicalRouter/red": "Vxlan"}},
"status": {"red": {"ports": {"10.1.0.1/24": {"vni": 10, "mac": "02:00:00:00:00:0a",
                                             "vtep": "10.0.0.1"}},
                   "uplinks": {"10.9.0.1/31": {"mac": "02:00:00:00:00:0b", "vtep": "10.0.0.1",
                               "ports": [{"port": "Ethernet1", "vlan": 7},
                                         {"port": "Ethernet2"}]}},
                   "routes": {"10.0.0.0/8": ["10.9.0.0", "10.9.0.2"], "::/0": []}},
           "green": {"ports": {"2001:db8::1/64": {"vni": 20, "mac": "02:00:00:00:00:0c"}}}}})";

} // namespace

TEST(ModelByAccessors, MacReceivedHasEveryAttributeOfEveryObject) {
    std::string const expected = macReceivedByAccessors(EXAMPLE_FABRIC);
    EXPECT_GT(expected.size(), 5000U);
    EXPECT_EQ(collected(exampleFabric(), "mac received"), expected);
}

TEST(ModelByAccessors, MacAdvertisedHasEveryAttributeOfEveryObject) {
    EXPECT_EQ(collected(exampleFabric(), "mac advertised"),
              macAdvertisedByAccessors(EXAMPLE_FABRIC));
}

TEST(ModelByAccessors, RouterMapRefersToASwitchThatWasShownBefore) {
    std::string const snapshot = snapshotWith("routers", sharedSwitch);
    std::string const shown = collected(snapshot, "router map");
    EXPECT_EQ(shown, routerMapByAccessors(TemporaryFile(snapshot).path()));
    EXPECT_NE(shown.find("[02:00:00:00:00:01] = see #"), std::string::npos) << shown;
    EXPECT_EQ(collected(exampleFabric(), "router map"), routerMapByAccessors(EXAMPLE_FABRIC));
}

TEST(ModelByAccessors, RouterDetailHasEveryAttributeOfEveryObject) {
    std::string const snapshot = snapshotWith("routers", sharedSwitch);
    EXPECT_EQ(collected(snapshot, "router detail"),
              routerDetailByAccessors(TemporaryFile(snapshot).path()));
    EXPECT_EQ(collected(exampleFabric(), "router detail"), routerDetailByAccessors(EXAMPLE_FABRIC));
}

TEST(ModelByAccessors, RouterRoutesHasEveryAttributeOfEveryObject) {
    std::string const snapshot = snapshotWith("routers", sharedSwitch);
    EXPECT_EQ(collected(snapshot, "router routes"),
              routerRoutesByAccessors(TemporaryFile(snapshot).path()));
    EXPECT_EQ(collected(exampleFabric(), "router routes"), routerRoutesByAccessors(EXAMPLE_FABRIC));
}

TEST(ModelByAccessors, FiltersAreThoseOfTheCommand) {
    EXPECT_EQ(collected(exampleFabric(), "mac received", {"--source", "leaf3", "--vni", "20"}),
              macReceivedByAccessors(EXAMPLE_FABRIC, "20", "leaf3"));
    EXPECT_EQ(collected(exampleFabric(), "mac received", {"--vtep", "10.0.0.3"}),
              macReceivedByAccessors(EXAMPLE_FABRIC, "", "", {"10.0.0.3"}));
}

TEST(ModelByAccessors, JsonRefersToASwitchThatWasShownBefore) {
    std::string const map =
        collected(snapshotWith("routers", sharedSwitch), "router map", {"--json"});
    EXPECT_NE(map.find(R"({"key":"02:00:00:00:00:01","value":{"object":)"), std::string::npos)
        << map;
}
