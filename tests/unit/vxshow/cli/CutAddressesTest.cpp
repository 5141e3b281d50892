#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/OnTerminal.h"

#include <gtest/gtest.h>

namespace {

/// What is on standard error when the listing goes to a terminal.
std::string remark(std::string const & snapshot, std::vector<std::string> const & command) {
    TemporaryFile const state(snapshot);
    std::vector<std::string> arguments{"--state", state.path()};
    arguments.insert(arguments.end(), command.begin(), command.end());
    Finished const finished = vxshowOnTerminal(arguments);
    EXPECT_EQ(finished.status, 0);
    return finished.err;
}

/// A switch with these bindings of one MAC address.
std::string withBindings(std::vector<std::string> const & addresses) {
    std::string bindings;
    for (std::string const & address : addresses) {
        bindings += (bindings.empty() ? "\"" : ", \"") + address +
                    R"(": {"mac": "02:00:00:00:00:01", "preference": 1, "changes": 1})";
    }
    return snapshotWith("received",
                        R"({"switches": {"leaf1": {"10": {"arp": {)" + bindings + "}}}}}");
}

std::string withRoutes(std::string const & routes) {
    return snapshotWith("routers", R"({"status": {"r": {"routes": {)" + routes + "}}}}");
}

std::string remarkOnRoutes(std::string const & routes) {
    return remark(withRoutes(routes), {"router", "routes"});
}

constexpr char const * one = "vxshow: 1 address is cut in this table; -o wide shows it whole\n";

} // namespace

TEST(CutAddresses, AnAddressThatReadsAsAnotherIsCounted) {
    // Cut after 15 characters: 2001:db8::12:34
    EXPECT_EQ(remark(withBindings({"2001:db8::12:3456"}), {"arp", "received"}), one);
    EXPECT_EQ(remark(withBindings({"2001:db8::12:3456", "2001:db8::12:3457", "2001:db8::12:3458"}),
                     {"arp", "received"}),
              "vxshow: 3 addresses are cut in this table; -o wide shows them whole\n");
}

TEST(CutAddresses, AnAddressThatIsWholeIsNotCounted) {
    EXPECT_EQ(remark(withBindings({"2001:db8::12:34", "192.168.100.200"}), {"arp", "received"}),
              "");
}

TEST(CutAddresses, AnAddressThatReadsAsNoneIsNotCounted) {
    // Cut after 15 characters: 2001:db8::1234:
    EXPECT_EQ(remark(withBindings({"2001:db8::1234:5678"}), {"arp", "received"}), "");
}

TEST(CutAddresses, AdvertisedBindingsAreCounted) {
    EXPECT_EQ(remark(snapshotWith("advertised", R"({"vnis": {"10": {"arp": {"2001:db8::12:3456":
                         {"mac": "02:00:00:00:00:01", "preference": 1, "changes": 1}}}}})"),
                     {"arp", "advertised"}),
              one);
}

TEST(CutAddresses, OnlyTheTextOnATerminalHasTheRemark) {
    auto const state = withBindings({"2001:db8::12:3456"});
    for (std::string const form : {"json", "pretty", "wide", "csv", "jsonl"}) {
        EXPECT_EQ(remark(state, {"arp", "received", "-o", form}), "");
    }
    // Expects nothing on standard error.
    EXPECT_NE(answer(state, {"arp", "received"}).find("2001:db8::12:34 0200"), std::string::npos);
}

TEST(CutAddresses, ALengthThatIsCutReadsAsAnotherPrefix) {
    // Cut after 18 characters: 2001:db8:70::1:0/1
    EXPECT_EQ(remarkOnRoutes(R"("2001:db8:70::1:0/112": [])"), one);
    EXPECT_EQ(remarkOnRoutes(R"("2001:db8:7000::/36": [])"), "");
}

TEST(CutAddresses, APrefixWhoseLengthIsLostReadsAsAnAddress) {
    EXPECT_EQ(remarkOnRoutes(R"("2001:db8:1:2:3:4::/96": [])"), one);
    EXPECT_EQ(remarkOnRoutes(R"("2001:db8:1:2:3:4444::/96": [])"), "");
}

TEST(CutAddresses, ANexthopThatIsCutWithinItsRowIsCounted) {
    // 49 characters have room for two of them and 2001:db8:a:1.
    EXPECT_EQ(remarkOnRoutes(
                  R"("10.0.0.0/8": ["2001:db8:a::1111", "2001:db8:a::2222", "2001:db8:a::3333"])"),
              one);
    // The row below begins anew.
    EXPECT_EQ(remarkOnRoutes(R"("10.0.0.0/8": ["2001:db8:a::1", "2001:db8:a::2", "2001:db8:a::3",
                                               "2001:db8:a::4"])"),
              "");
}

TEST(CutAddresses, PortsOfRoutersAndVtepsOfTheMapAreCounted) {
    EXPECT_EQ(remark(exampleFabric(), {"router", "detail"}),
              "vxshow: 2 addresses are cut in this table; -o wide shows them whole\n");
    auto const map = snapshotWith("routers", R"({
        "switches": {"00:1c:73:00:00:01": {"vteps": ["2001:db8::12:3456"]}},
        "vteps": {"2001:db8::12:3456": {"active": true, "switches": ["00:1c:73:00:00:01"]}},
        "published": {"00:1c:73:00:00:01":
            {"vxlancontroller/version2/logicalRouter/prod": "Vxlan"}}})");
    EXPECT_EQ(remark(map, {"router", "map"}), one);
}

TEST(CutAddresses, AnUplinkPortWithoutARowIsNotCounted) {
    auto const uplink = [](std::string const & ports) {
        return snapshotWith("routers", R"({"status": {"r": {"uplinks": {"2001:db8:64:1::1/127":
            {"mac": "02:00:00:00:00:01")" + ports +
                                           "}}}}}");
    };
    EXPECT_EQ(remark(uplink(R"(, "ports": [{"port": "et1", "vlan": 5}])"), {"router", "detail"}),
              one);
    EXPECT_EQ(remark(uplink(""), {"router", "detail"}), "");
}
