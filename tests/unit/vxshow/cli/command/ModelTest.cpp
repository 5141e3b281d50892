#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

namespace {

/// What `vxshow model` prints with these arguments, without any state.
std::string model(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "model");
    Finished const finished = runVxshow(arguments);
    EXPECT_EQ(finished.status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(finished.err, "");
    return finished.out;
}

constexpr char const * allTypes =
    "Type                                        Kind   Base                           Attributes\n"
    "------------------------------------------- ------ ------------------------------ ----------\n"
    "VxlanController::Cli::HostFloodTable        entity -                                       2\n"
    "VxlanController::Cli::VcsLRMap              entity VxlanController::Cli::LRMapBase         "
    "10\n"
    "VxlanController::Cli::SwitchDir             entity -                                       1\n"
    "VxlanController::Cli::VxlanFdbSet           entity -                                       1\n"
    "VxlanController::Cli::ArpAdvertised         entity -                                       6\n"
    "VxlanController::Cli::VtepList              entity -                                       1\n"
    "VxlanController::Cli::VniStatusDirList      entity -                                       1\n"
    "VxlanController::Cli::HostFloodTableList    entity -                                       1\n"
    "VxlanController::Cli::SwitchMap             entity -                                       2\n"
    "VxlanController::Cli::VcsVniAdvertised      entity -                                      13\n"
    "VxlanController::Cli::VxlanVtepSet          entity -                                       1\n"
    "VxlanController::Cli::LRMapBase             entity -                                       6\n"
    "VxlanController::Cli::LRRouteByName         entity -                                       2\n"
    "VxlanController::Cli::LRMap                 entity -                                       2\n"
    "VxlanController::Cli::MacVtepMultiPath      value  -                                       2\n"
    "VxlanController::Cli::LRDetail              entity -                                       3\n"
    "VxlanController::Cli::VxlanVtep             entity -                                       2\n"
    "VxlanController::Cli::VniStatusList         entity -                                       1\n"
    "VxlanController::Cli::ArpReceived           entity -                                       7\n"
    "VxlanController::Cli::MacVtepFloodList      entity -                                       2\n"
    "VxlanController::Cli::VxlanArpEntry         entity -                                       4\n"
    "VxlanController::Cli::LRIpUplinkPortAddress value  -                                       6\n"
    "VxlanController::Cli::LRRoute               entity -                                       2\n"
    "VxlanController::Cli::VcsLR                 entity VxlanController::Cli::LRMapBase         "
    "12\n"
    "VxlanController::Cli::VxlanArpTable         entity -                                       2\n"
    "VxlanController::Cli::Switch                entity -                                       2\n"
    "VxlanController::Cli::VcsLRRoute            entity -                                       6\n"
    "VxlanController::Cli::MacVtep               value  -                                       3\n"
    "VxlanController::Cli::VcsVniReceived        entity -                                      14\n"
    "VxlanController::Cli::VniStatus             entity -                                       "
    "5\n";

constexpr char const * macVtep =
    "Type:        VxlanController::Cli::MacVtep\n"
    "Kind:        value\n"
    "Base:        -\n"
    "Constructor: (macAddr, vtepIp, moveCount)\n"
    "One unicast MAC binding.\n"
    "\n"
    "Number Name                     Kind                     Type\n"
    "------ ------------------------ ------------------------ ------------------------\n"
    "     2 macAddr                  constructor argument     Nolt::EthAddr\n"
    "     3 vtepIp                   constructor argument     Nolt::IpAddr\n"
    "         The VTEP that the address is behind.\n"
    "     4 moveCount                plain                    Quay::Seqno32\n"
    "         How often the address has moved from one VTEP to another.\n";

} // namespace

TEST(Model, ListsAllTypesInOrderOfRegistration) {
    EXPECT_EQ(model({}), allTypes);
}

TEST(Model, ListsTheAttributesOfOneType) {
    EXPECT_EQ(model({"MacVtep"}), macVtep);
    EXPECT_EQ(model({"VxlanController::Cli::MacVtep"}), macVtep);
}

TEST(Model, ListsInheritedAttributesOrderedByNumber) {
    EXPECT_EQ(
        model({"VcsLRMap"}),
        "Type:        VxlanController::Cli::VcsLRMap\n"
        "Kind:        entity\n"
        "Base:        VxlanController::Cli::LRMapBase\n"
        "Constructor: (switchPublishStatus, switchInfoDir, lRNameFilter, switchFilter, "
        "vtepFilter)\n"
        "The command that shows which switches each logical router is present on.\n"
        "\n"
        "Number Name                     Kind                     Type\n"
        "------ ------------------------ ------------------------ ------------------------\n"
        "   130 switchPublishStatus      entity pointer           "
        "Statestore::PublishStatus\n"
        "   131 switchInfoDir            entity pointer           "
        "VxlanController::SwitchInfoDir\n"
        "   132 pathPrefix               constant                 Vex::String\n"
        "         The path under which switches publish the status of their logical "
        "routers.\n"
        "   133 switchMap                owned entity collection  "
        "VxlanController::Cli::SwitchMap[Vex::String]\n"
        "   134 lRMap                    owned entity collection  "
        "VxlanController::Cli::LRMap[Vex::String]\n"
        "   135 buildLRMap               method                   "
        "(lRNameFilter : Vex::String, switchFilter : Vex::String, "
        "vtepFilter : shared VxlanController::Cli::VtepList)\n"
        "         Discards earlier results, then fills both maps.\n"
        "         An empty text means every router or switch, a null or empty list every "
        "VTEP.\n"
        "   258 lRNameFilter             constructor argument     Vex::String\n"
        "         Empty means every logical router.\n"
        "   259 switchFilter             constructor argument     Vex::String\n"
        "         Empty means every switch.\n"
        "   260 vtepFilter               entity pointer           VxlanController::Cli::VtepList\n"
        "         Null or empty means every VTEP.\n"
        "   261 render                   method                   "
        "(fd : U32, fmt : U32, revision : U32)\n"
        "         Collects and prints to the descriptor: text when the format is 1, else "
        "JSON.\n");
}

TEST(Model, JsonHoldsTheWholeRecordOfAType) {
    EXPECT_EQ(model({"MacVtepMultiPath", "--json"}),
              "{\"types\":[{\"name\":\"VxlanController::Cli::MacVtepMultiPath\",\"kind\":\"value\","
              "\"doc\":\"A MAC address that is reachable through several VTEPs.\","
              "\"constructorArguments\":[\"macAddr\"],\"attributes\":["
              "{\"number\":2,\"name\":\"macAddr\",\"kind\":\"constructor argument\","
              "\"type\":\"Nolt::EthAddr\",\"doc\":\"\",\"inherited\":false},"
              "{\"number\":3,\"name\":\"vtepIpList\",\"kind\":\"set\",\"type\":\"bool\","
              "\"key\":\"Nolt::IpAddr\",\"doc\":\"\",\"inherited\":false}]}]}\n");
    std::string const derived = model({"--json", "VcsLR"});
    EXPECT_NE(derived.find("\"base\":\"VxlanController::Cli::LRMapBase\""), std::string::npos);
    EXPECT_NE(
        derived.find(
            "{\"number\":133,\"name\":\"switchMap\",\"kind\":\"owned entity "
            "collection\",\"type\":\"VxlanController::Cli::SwitchMap\",\"key\":\"Vex::String\","
            "\"doc\":\"\",\"inherited\":true}"),
        std::string::npos)
        << derived;
}

TEST(Model, JsonOfAllTypesHasTheSameShape) {
    std::string const all = model({"--json"});
    std::string const one = model({"--json", "HostFloodTable"});
    std::string const closing = "]}\n";
    EXPECT_EQ(all.substr(0, one.size() - closing.size()),
              one.substr(0, one.size() - closing.size()));
    std::size_t types = 0;
    for (auto at = all.find("\"constructorArguments\""); at != std::string::npos;
         at = all.find("\"constructorArguments\"", at + 1)) {
        ++types;
    }
    EXPECT_EQ(types, 30U);
}

TEST(Model, PrettyJsonIsIndented) {
    EXPECT_EQ(model({"--pretty", "VtepList"}), R"({
  "types": [
    {
      "name": "VxlanController::Cli::VtepList",
      "kind": "entity",
      "doc": "The VTEPs to which a listing is limited. No entry means no limit.",
      "constructorArguments": [],
      "attributes": [
        {
          "number": 130,
          "name": "vtep",
          "kind": "hashed set",
          "type": "bool",
          "key": "Nolt::IpAddr",
          "doc": "Only ever looked up, never printed.",
          "inherited": false
        }
      ]
    }
  ]
}
)");
}

TEST(Model, NeedsNoStateAndReadsNone) {
    EXPECT_EQ(model({"--state", "/nonexistent", "MacVtep"}), macVtep);
    EXPECT_EQ(runVxshow({"model", "MacVtep"}, {.stateFile = "/nonexistent"}).out, macVtep);
}

TEST(Model, RefusesAnUnknownTypeAndNamesSimilarOnes) {
    EXPECT_EQ(refused({"model", "MacVtp"}),
              "TYPE: 'MacVtp': not a type of the model; similar: MacVtep");
    EXPECT_EQ(refused({"model", "macvtep"}), "TYPE: 'macvtep': not a type of the model; similar: "
                                             "MacVtepMultiPath, MacVtepFloodList, MacVtep");
    EXPECT_EQ(refused({"model", "Cli::VcsLRRoutes"}),
              "TYPE: 'Cli::VcsLRRoutes': not a type of the model; similar: VcsLRRoute");
    EXPECT_EQ(refused({"model", "Nothing"}),
              "TYPE: 'Nothing': not a type of the model; 'vxshow model' lists all types");
    EXPECT_EQ(refused({"model", ""}),
              "TYPE: '': not a type of the model; 'vxshow model' lists all types");
    EXPECT_EQ(refused({"model", "MacVtep", "VniStatus"}),
              "'VniStatus': not expected here; see 'vxshow model --help'");
}
