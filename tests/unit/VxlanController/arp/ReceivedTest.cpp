#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/arp/ArpState.h"

#include <gtest/gtest.h>

namespace {

/// Two switches with different bindings in the same VNIs.
ArpState twoSwitches() {
    ArpState state;
    state
        .received("leaf2", 10,
                  {{"10.0.0.2", "00:1c:73:0a:0b:0c", 3, 100},
                   {"2001:db8:1:2::3:4", "02:00:00:00:00:01", 2, 200}})
        .received("leaf2", 9, {{"10.0.0.2", "02:00:00:00:00:02", 1}})
        .received("leaf10", 10,
                  {{"10.0.0.10", "02:00:00:00:00:03"}, {"10.0.0.2", "02:00:00:00:00:04", 5, 7}});
    return state;
}

} // namespace

TEST(ArpReceived, ShowsEveryBindingAsText) {
    EXPECT_EQ(receivedText(twoSwitches()),
              "                        Received ARP Table\n"
              "-------------------------------------------------------------------------\n"
              "Switch              VNI      IP Address      MAC Address        Changes\n"
              "------------------- -------- --------------- ------------------ ---------\n"
              "leaf10              10       10.0.0.2        0200.0000.0004     5        \n"
              "leaf10              10       10.0.0.10       0200.0000.0003     0        \n"
              "leaf2               10       10.0.0.2        001c.730a.0b0c     3        \n"
              "leaf2               10       2001:db8:1:2::3 0200.0000.0001     2        \n"
              "leaf2               9        10.0.0.2        0200.0000.0002     1        \n"
              "\n"
              "Total IP addresses for this criterion: 5\n");
}

TEST(ArpReceived, ShowsEveryBindingAsJson) {
    EXPECT_EQ(rendered(receivedCommand(twoSwitches()), 3),
              R"({
  "switches": {
    "leaf10": {
      "vnis": {
        "10": {
          "addresses": {
            "10.0.0.2": {
              "macAddress": "02:00:00:00:00:04",
              "changes": 5,
              "preference": 7
            },
            "10.0.0.10": {
              "macAddress": "02:00:00:00:00:03",
              "changes": 0,
              "preference": 0
            }
          }
        }
      }
    },
    "leaf2": {
      "vnis": {
        "10": {
          "addresses": {
            "10.0.0.2": {
              "macAddress": "00:1c:73:0a:0b:0c",
              "changes": 3,
              "preference": 100
            },
            "2001:db8:1:2::3:4": {
              "macAddress": "02:00:00:00:00:01",
              "changes": 2,
              "preference": 200
            }
          }
        },
        "9": {
          "addresses": {
            "10.0.0.2": {
              "macAddress": "02:00:00:00:00:02",
              "changes": 1,
              "preference": 0
            }
          }
        }
      }
    }
  }
}
)");
}

TEST(ArpReceived, AnEmptyOrAbsentDirectoryIsAnEmptyTable) {
    ArpState state;
    EXPECT_EQ(receivedText(state), receivedTable("", 0));
    EXPECT_EQ(receivedJson(state), "{\"switches\":{}}\n");
    state.switches = nullptr;
    EXPECT_EQ(receivedText(state), receivedTable("", 0));
    EXPECT_EQ(receivedJson(state), "{\"switches\":{}}\n");
}

TEST(ArpReceived, AnUnknownSwitchIsAnEmptyTable) {
    for (char const * name : {"leaf", "LEAF2", "leaf2 ", "all"}) {
        EXPECT_EQ(receivedText(twoSwitches(), {.switchId = name}), receivedTable("", 0));
        EXPECT_EQ(receivedJson(twoSwitches(), {.switchId = name}), "{\"switches\":{}}\n");
    }
}

TEST(ArpReceived, ASwitchFilterSelectsThatSwitchOnly) {
    EXPECT_EQ(receivedText(twoSwitches(), {.switchId = "leaf10"}),
              receivedTable("leaf10              10       10.0.0.2        0200.0000.0004     5"
                            "        \n"
                            "leaf10              10       10.0.0.10       0200.0000.0003     0"
                            "        \n",
                            2));
}

TEST(ArpReceived, ASwitchWithoutMatchingVniIsStillListed) {
    EXPECT_EQ(receivedJson(twoSwitches(), {.vni = Vxlan::Vni(9), .ip = "1.1.1.1"}),
              R"({"switches":{"leaf10":{"vnis":{}},"leaf2":{"vnis":{"9":{"addresses":{}}}}}})"
              "\n");
    EXPECT_EQ(receivedText(twoSwitches(), {.vni = Vxlan::Vni(9), .ip = "1.1.1.1"}),
              receivedTable("", 0));
}

TEST(ArpReceived, ASwitchWithoutVnisIsListed) {
    ArpState state;
    state.switchOnly("leaf1");
    EXPECT_EQ(receivedJson(state), "{\"switches\":{\"leaf1\":{\"vnis\":{}}}}\n");
    EXPECT_EQ(receivedText(state), receivedTable("", 0));
}

TEST(ArpReceived, AMacFilterThatMatchesNothingKeepsEveryVniInJsonAndNoRowInText) {
    ArpFilters const filters{.mac = "02:00:00:00:00:99"};
    EXPECT_EQ(receivedText(twoSwitches(), filters), receivedTable("", 0));
    EXPECT_EQ(receivedJson(twoSwitches(), filters),
              R"({"switches":{"leaf10":{"vnis":{"10":{"addresses":{}}}},)"
              R"("leaf2":{"vnis":{"10":{"addresses":{}},"9":{"addresses":{}}}}}})"
              "\n");
}

TEST(ArpReceived, AMacFilterSelectsThatMacOnly) {
    EXPECT_EQ(receivedText(twoSwitches(), {.mac = "02:00:00:00:00:02"}),
              receivedTable("leaf2               9        10.0.0.2        0200.0000.0002     1"
                            "        \n",
                            1));
}

TEST(ArpReceived, AnIpFilterSelectsThatAddressOnly) {
    EXPECT_EQ(receivedText(twoSwitches(), {.ip = "2001:db8:1:2::3:4"}),
              receivedTable("leaf2               10       2001:db8:1:2::3 0200.0000.0001     2"
                            "        \n",
                            1));
}

TEST(ArpReceived, AVniFilterOfTheNoneValueSelectsEveryVni) {
    EXPECT_EQ(receivedText(twoSwitches(), {.vni = Vxlan::VniOrNone(16777216)}),
              receivedText(twoSwitches()));
}

TEST(ArpReceived, Vni100IsListedBeforeVni20) {
    ArpState state;
    state.received("leaf1", 20, {}).received("leaf1", 100, {}).received("leaf1", 9, {});
    EXPECT_EQ(receivedJson(state),
              R"({"switches":{"leaf1":{"vnis":{"100":{"addresses":{}},"20":{"addresses":{}},)"
              R"("9":{"addresses":{}}}}}})"
              "\n");
}

TEST(ArpReceived, TheDottedFlagChangesTheVni) {
    ArpState state;
    state.received("leaf1", 4098, {{"10.0.0.1", "02:00:00:00:00:01"}});
    EXPECT_EQ(receivedText(state, {.dotted = true}),
              receivedTable("leaf1               0.16.2   10.0.0.1        0200.0000.0001     0"
                            "        \n",
                            1));
    EXPECT_EQ(receivedJson(state, {.mac = "02:00:00:00:00:02", .dotted = true}),
              R"({"switches":{"leaf1":{"vnis":{"0.16.2":{"addresses":{}}}}}})"
              "\n");
}

TEST(ArpReceived, AnEntryOfAnotherTypeIsSkipped) {
    ArpState state = twoSwitches();
    state.switches->entityIs("leaf3", Vex::makePtr<VxlanController::VniFdbStatusV2>());
    state.switches->dirIs("leaf4");
    EXPECT_EQ(receivedJson(state), receivedJson(twoSwitches()));
}

TEST(ArpReceived, TwoSwitchesCanDisagree) {
    ArpState state;
    state.received("leaf1", 10, {{"10.0.0.1", "02:00:00:00:00:01"}})
        .received("leaf2", 10, {{"10.0.0.1", "02:00:00:00:00:02"}});
    EXPECT_EQ(receivedText(state),
              receivedTable("leaf1               10       10.0.0.1        0200.0000.0001     0"
                            "        \n"
                            "leaf2               10       10.0.0.1        0200.0000.0002     0"
                            "        \n",
                            2));
}

TEST(ArpReceived, EveryRevisionPrintsTheSame) {
    auto const command = receivedCommand(twoSwitches());
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        std::string const whole = rendered(command, format, 2);
        for (Vex::U32 revision : {0U, 1U, 3U, 4294967295U}) {
            EXPECT_EQ(rendered(command, format, revision), whole) << revision;
        }
    }
}
