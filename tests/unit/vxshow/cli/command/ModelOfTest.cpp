#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

using Words = std::vector<std::string>;

/// What `vxshow model --of` prints of the state.
std::string modelOf(std::string const & snapshot, std::string const & command,
                    Words const & filters = {}) {
    Words arguments{"model", "--of", command};
    arguments.insert(arguments.end(), filters.begin(), filters.end());
    return answer(snapshot, arguments);
}

} // namespace

TEST(ModelOf, ArpReceivedHasItsTablesAfterTheCommand) {
    EXPECT_EQ(modelOf(R"({"format":"vxlan-controller-state","version":1,"received":{"switches":{
"leaf2":{"30":{"arp":{}}},
"leaf1":{"10":{"arp":{"10.0.0.9":{"mac":"02:00:00:00:00:01","preference":255,"changes":7},
                      "2001:db8::9":{"mac":"02:00:00:00:00:02"}}}}}}})",
                      "arp received", {"--dotted"}),
              R"(VxlanController::Cli::ArpReceived #1
  switches : Vex::Dir = (not part of the model)
  vniDotted : bool = True
  vniFilter : Vxlan::VniOrNone =
  macFilter : Nolt::EthAddr = 00:00:00:00:00:00
  ipFilter : Nolt::IpGenAddr =
  switchFilter : Vex::String =
VxlanController::Cli::VxlanVtepSet #2
  vtep : VxlanController::Cli::VxlanVtep[Vex::String] = 2 entries
    [leaf1] = VxlanController::Cli::VxlanVtep #3
      switchId : Vex::String = leaf1
      arpTable : VxlanController::Cli::VxlanArpTable[Vex::String] = 1 entry
        [0.0.10] = VxlanController::Cli::VxlanArpTable #4
          vni : Vex::String = 0.0.10
          arpEntry : VxlanController::Cli::VxlanArpEntry[Nolt::IpGenAddr] = 2 entries
            [10.0.0.9] = VxlanController::Cli::VxlanArpEntry #5
              ipAddress : Nolt::IpGenAddr = 10.0.0.9
              macAddress : Nolt::EthAddr = 02:00:00:00:00:01
              preference : U8 = 255
              changes : U32 = 7
            [2001:db8::9] = VxlanController::Cli::VxlanArpEntry #6
              ipAddress : Nolt::IpGenAddr = 2001:db8::9
              macAddress : Nolt::EthAddr = 02:00:00:00:00:02
              preference : U8 = 0
              changes : U32 = 0
    [leaf2] = VxlanController::Cli::VxlanVtep #7
      switchId : Vex::String = leaf2
      arpTable : VxlanController::Cli::VxlanArpTable[Vex::String] = 1 entry
        [0.0.30] = VxlanController::Cli::VxlanArpTable #8
          vni : Vex::String = 0.0.30
          arpEntry : VxlanController::Cli::VxlanArpEntry[Nolt::IpGenAddr] = 0 entries
)");
}

TEST(ModelOf, ArpAdvertisedHasItsTablesAfterTheCommand) {
    EXPECT_EQ(modelOf(R"({"format":"vxlan-controller-state","version":1,"advertised":{"vnis":{
"10":{"arp":{"10.0.0.9":{"mac":"02:00:00:00:00:01"}}},
"010":{"arp":{"10.0.0.8":{"mac":"02:00:00:00:00:02","changes":4294967295}}}}}})",
                      "arp advertised", {"--mac", "0200.0000.0002"}),
              R"(VxlanController::Cli::ArpAdvertised #1
  vniStatusDir : Vex::Dir = (not part of the model)
  vniDotted : bool = False
  vniFilter : Vxlan::VniOrNone =
  macFilter : Nolt::EthAddr = 02:00:00:00:00:02
  ipFilter : Nolt::IpGenAddr =
VxlanController::Cli::VxlanFdbSet #2
  arpTable : VxlanController::Cli::VxlanArpTable[Vex::String] = 1 entry
    [10] = VxlanController::Cli::VxlanArpTable #3
      vni : Vex::String = 10
      arpEntry : VxlanController::Cli::VxlanArpEntry[Nolt::IpGenAddr] = 1 entry
        [10.0.0.8] = VxlanController::Cli::VxlanArpEntry #4
          ipAddress : Nolt::IpGenAddr = 10.0.0.8
          macAddress : Nolt::EthAddr = 02:00:00:00:00:02
          preference : U8 = 0
          changes : U32 = 4294967295
)");
}

TEST(ModelOf, TheOptionStandsBeforeOrAfterTheFilters) {
    std::string const after = modelOf(exampleFabric(), "mac received", {"--vni", "20"});
    EXPECT_EQ(answer(exampleFabric(), {"model", "--vni", "20", "--of", "mac received"}), after);
    EXPECT_EQ(answer(exampleFabric(), {"model", "--vni=20", "--of=mac received"}), after);
}

TEST(ModelOf, AnAbsentStateIsNull) {
    EXPECT_EQ(modelOf(R"({"format":"vxlan-controller-state","version":1})", "mac received"),
              R"(VxlanController::Cli::VcsVniReceived #1
  switchAggregate : Vex::Dir = null
  nonSwitchAggregate : VxlanController::Cli::VniStatusDirList = null
  nonSwitchHostFloodTables : VxlanController::Cli::HostFloodTableList = null
  vniDotted : bool = False
  vniFilter : Vxlan::VniOrNone =
  macFilter : Nolt::EthAddr = 00:00:00:00:00:00
  switchFilter : Vex::String =
  vtepFilter : VxlanController::Cli::VtepList = VxlanController::Cli::VtepList #2
    vtep : bool[Nolt::IpAddr] = 0 entries
  switchDir : VxlanController::Cli::SwitchDir = VxlanController::Cli::SwitchDir #3
    switchList : VxlanController::Cli::Switch[Vex::Name] = 0 entries
  nonSwitchSourceDir : VxlanController::Cli::SwitchDir = VxlanController::Cli::SwitchDir #4
    switchList : VxlanController::Cli::Switch[Vex::Name] = 0 entries
)");
    EXPECT_EQ(modelOf(R"({"format":"vxlan-controller-state","version":1})", "router routes"),
              R"(VxlanController::Cli::VcsLRRoute #1
  lRStatusDir : Vex::Dir = null
  lRNameFilter : Vex::String =
  prefixFilter : Nolt::IpGenPrefix =
  lRRouteByName : VxlanController::Cli::LRRouteByName[Vex::String] = 0 entries
)");
}

TEST(ModelOf, JsonHasTheSameAttributes) {
    EXPECT_EQ(modelOf(snapshotWith("routers", R"({"status": {"red": {"routes": {
"10.0.0.0/8": ["10.9.0.0"]}}}})"),
                      "router routes", {"--pretty"}),
              R"({
  "objects": [
    {
      "type": "VxlanController::Cli::VcsLRRoute",
      "object": 1,
      "attributes": {
        "lRStatusDir": {
          "type": "Vex::Dir"
        },
        "lRNameFilter": "",
        "prefixFilter": "",
        "lRRouteByName": [
          {
            "key": "red",
            "value": {
              "type": "VxlanController::Cli::LRRouteByName",
              "object": 2,
              "attributes": {
                "lRName": "red",
                "lRRoute": [
                  {
                    "key": "10.0.0.0/8",
                    "value": {
                      "type": "VxlanController::Cli::LRRoute",
                      "object": 3,
                      "attributes": {
                        "prefix": "10.0.0.0/8",
                        "nexthop": [
                          {
                            "key": "10.9.0.0",
                            "value": true
                          }
                        ]
                      }
                    }
                  }
                ]
              }
            }
          }
        ]
      }
    }
  ]
}
)");
    std::string const absent =
        modelOf(R"({"format":"vxlan-controller-state","version":1})", "arp received", {"--json"});
    EXPECT_EQ(absent, R"({"objects":[{"type":"VxlanController::Cli::ArpReceived","object":1,)"
                      R"("attributes":{"switches":{"null":true},"vniDotted":false,"vniFilter":"",)"
                      R"("macFilter":"00:00:00:00:00:00","ipFilter":"","switchFilter":""}},)"
                      R"({"type":"VxlanController::Cli::VxlanVtepSet","object":2,)"
                      R"("attributes":{"vtep":[]}}]})"
                      "\n");
}

TEST(ModelOf, ANameIsOneHarmlessLineInTextAndEscapedInJson) {
    std::string const snapshot = snapshotWith(
        "received", R"({"switches": {"a\n\u001b[31m \"=\" \u00fc": {"10": {"arp": {}}}}})");
    std::string const text = modelOf(snapshot, "arp received");
    EXPECT_NE(text.find("    [a\\x0a\\x1b[31m \"=\" \\xc3\\xbc] = "), std::string::npos) << text;
    EXPECT_NE(text.find("\n      switchId : Vex::String = a\\x0a\\x1b[31m \"=\" \\xc3\\xbc\n"),
              std::string::npos)
        << text;
    std::string const json = modelOf(snapshot, "arp received", {"--json"});
    EXPECT_EQ(json.find('\n'), json.size() - 1);
    EXPECT_NE(json.find(R"("switchId":"a\n\u001b[31m \"=\" )"
                        "\xc3\xbc\""),
              std::string::npos)
        << json;
}

TEST(ModelOf, RefusesACommandThatDoesNotCollect) {
    std::string const expected = ": expected one of mac received, mac "
                                 "advertised, arp received, arp advertised, router map, router "
                                 "detail, router routes";
    EXPECT_EQ(refused({"model", "--of", "mac recieved"}), "--of: 'mac recieved'" + expected);
    EXPECT_EQ(refused({"model", "--of", "model"}), "--of: 'model'" + expected);
    EXPECT_EQ(refused({"model", "--of", "x\x1b\n", "--vni", "20"}),
              "--of: 'x\\x1b\\x0a'" + expected);
    EXPECT_EQ(refused({"model", "--of"}), "--of: no value; expected COMMAND");
    EXPECT_EQ(refused({"model", "--of", "mac received", "--of", "arp received"}),
              "--of: given more than once");
}

TEST(ModelOf, RefusesFiltersOfAnotherCommandAndAType) {
    EXPECT_EQ(refused({"model", "--of", "mac received", "--switch", "leaf1"}),
              "'--switch': not expected here; see 'vxshow model --help'");
    EXPECT_EQ(refused({"model", "--of", "mac received", "MacVtep"}),
              "'MacVtep': not expected here; see 'vxshow model --help'");
    EXPECT_EQ(refused({"model", "--of", "mac received", "--vni", "x"}).substr(0, 10), "--vni: 'x'");
    EXPECT_EQ(refused({"model", "--vni", "20"}),
              "'--vni': not expected here; see 'vxshow model --help'");
    EXPECT_EQ(refused({"mac", "received", "--of", "mac received"}),
              "'--of': not expected here; see 'vxshow mac received --help'");
}

TEST(ModelOf, AnEntryThatIsNoVniIsNamedAsByTheCommand) {
    std::string const snapshot = snapshotWith("advertised", R"({"vnis": {"abc": {"arp": {}}}})");
    EXPECT_EQ(failure(snapshot, {"model", "--of", "arp advertised"}),
              "model --of 'arp advertised': entry 'abc': found no number, expected a VNI in "
              "decimal");
}

TEST(ModelOf, HelpListsTheFiltersOfTheCommand) {
    Finished const help = runVxshow({"model", "--of", "router routes", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--prefix PREFIX"), std::string::npos) << help.out;
    EXPECT_EQ(help.out.find("--vni VNI"), std::string::npos) << help.out;
}

TEST(ModelOf, EndsWithItsReaderAsOtherCommandsDo) {
    TemporaryFile const state(largeSnapshot(50000));
    Process model({"--state", state.path(), "model", "--of", "mac received"});
    EXPECT_FALSE(model.readSome(100).empty());
    model.closeReader();
    Finished const finished = model.finish();
    EXPECT_EQ(finished.signal, SIGPIPE);
    EXPECT_EQ(finished.err, "");
}
