#include "vxshow/state/snapshot/SwitchesAndVteps.h"

#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

using VxlanController::IpVtepKeyPair;
using VxlanController::SwitchIdVtepKeyPair;

Nolt::IpGenAddr vtepIp(std::string_view text) {
    return Nolt::IpGenAddr::fromString(text);
}

Vex::Ptr<VxlanController::SwitchInfoDir> switchInfo(std::string_view routers) {
    return mounted(withRouters(routers)).routers.switchInfoDir;
}

TEST(SwitchesAndVteps, AreLinkedToEachOther) {
    auto const dir = switchInfo(R"({
        "switches":{"00:1c:73:00:00:01":{"vteps":["10.0.0.1","2001:db8::1"]},
                    "leaf2":{"vteps":["10.0.0.1"]}},
        "vteps":{"10.0.0.1":{"active":true,"switches":["00:1c:73:00:00:01","leaf2"]},
                 "2001:db8::1":{"active":false,"switches":["00:1c:73:00:00:01"]}}})");
    EXPECT_EQ(dir->switchInfo().size(), 2);
    auto const first = dir->switchInfo("00:1c:73:00:00:01");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->vtepMap().size(), 2);
    auto const * const shared = first->vtepMap().find(IpVtepKeyPair{vtepIp("10.0.0.1"), ""});
    ASSERT_TRUE(shared);
    EXPECT_EQ(shared->element(), dir->vtepMap(vtepIp("10.0.0.1")));
    EXPECT_EQ(
        dir->switchInfo("leaf2")->vtepMap().find(IpVtepKeyPair{vtepIp("10.0.0.1"), ""})->element(),
        dir->vtepMap(vtepIp("10.0.0.1")));
    EXPECT_TRUE(dir->vtepMap(vtepIp("10.0.0.1"))->active());
    EXPECT_FALSE(dir->vtepMap(vtepIp("2001:db8::1"))->active());
    EXPECT_EQ(dir->vtepMap(vtepIp("10.0.0.1"))->switchId().size(), 2);
    EXPECT_TRUE(dir->vtepMap(vtepIp("10.0.0.1"))->switchId().has(SwitchIdVtepKeyPair{"leaf2", ""}));
}

TEST(SwitchesAndVteps, AreReadInEitherOrder) {
    auto const dir = switchInfo(R"({
        "vteps":{"2001:DB8:0::1":{"switches":["leaf1"],"active":true}},
        "switches":{"leaf1":{"vteps":["2001:db8::1"]}}})");
    auto const vteps = dir->switchInfo("leaf1")->vtepMap();
    ASSERT_EQ(vteps.size(), 1);
    EXPECT_TRUE(vteps.begin()->active());
}

TEST(SwitchesAndVteps, MountADirectoryIfEitherIsPresent) {
    EXPECT_FALSE(switchInfo(R"({"published":{},"status":{}})"));
    ASSERT_TRUE(switchInfo(R"({"switches":{}})"));
    EXPECT_TRUE(switchInfo(R"({"switches":{}})")->switchInfo().empty());
    ASSERT_TRUE(switchInfo(R"({"vteps":{}})"));
    auto const vtepsAlone = switchInfo(R"({"vteps":{"10.0.0.1":{"active":true}}})");
    EXPECT_TRUE(vtepsAlone->switchInfo().empty());
    ASSERT_TRUE(vtepsAlone->vtepMap(vtepIp("10.0.0.1")));
    EXPECT_TRUE(vtepsAlone->vtepMap(vtepIp("10.0.0.1"))->switchId().empty());
    auto const switchesAlone = switchInfo(R"({"switches":{"leaf1":{},"leaf2":{"vteps":[]}}})");
    EXPECT_EQ(switchesAlone->switchInfo().size(), 2);
    EXPECT_TRUE(switchesAlone->switchInfo("leaf1")->vtepMap().empty());
}

TEST(SwitchesAndVteps, KeepSwitchIdentifiersUnchanged) {
    auto const dir = switchInfo(
        R"({"switches":{"00:1c:73:00:00:01":{},"00:1C:73:00:00:01":{},"":{},"a\u0000b":{},)"
        R"("\ud83c\udf3f":{}},"vteps":{"10.0.0.1":{"active":true,"switches":["a\u0000b","a"]}}})");
    EXPECT_EQ(dir->switchInfo().size(), 5);
    using namespace std::string_view_literals;
    for (auto const id :
         {"00:1c:73:00:00:01"sv, "00:1C:73:00:00:01"sv, ""sv, "a\0b"sv, "\U0001f33f"sv}) {
        EXPECT_TRUE(dir->switchInfo(Vex::String(id))) << id;
    }
    auto const & ids = dir->vtepMap(vtepIp("10.0.0.1"))->switchId();
    EXPECT_EQ(ids.size(), 2);
    EXPECT_TRUE(ids.has(SwitchIdVtepKeyPair{Vex::String("a\0b"sv), ""}));
}

TEST(SwitchesAndVteps, AcceptAVtepThatNamesUnknownSwitches) {
    auto const dir = switchInfo(R"({"vteps":{"10.0.0.1":{"active":true,"switches":["gone"]}}})");
    EXPECT_FALSE(dir->switchInfo("gone"));
    EXPECT_TRUE(dir->vtepMap(vtepIp("10.0.0.1"))->switchId().has(SwitchIdVtepKeyPair{"gone", ""}));
}

TEST(SwitchesAndVteps, CanBeMany) {
    std::string switches;
    std::string vteps;
    for (unsigned number = 0; number < 20000; ++number) {
        auto const address = Nolt::IpAddr(0x0A000000 + number).stringValue();
        auto const id = "leaf" + std::to_string(number);
        auto const comma = number == 0 ? "" : ",";
        switches.append(comma).append("\"").append(id).append(R"(":{"vteps":[")");
        switches.append(address).append("\"]}");
        vteps.append(comma).append("\"").append(address).append(
            R"(":{"active":true,"switches":[")");
        vteps.append(id).append("\"]}");
    }
    auto const dir = switchInfo("{\"switches\":{" + switches + "},\"vteps\":{" + vteps + "}}");
    EXPECT_EQ(dir->switchInfo().size(), 20000);
    EXPECT_TRUE(
        dir->switchInfo("leaf19999")->vtepMap().has(IpVtepKeyPair{vtepIp("10.0.78.31"), ""}));
    EXPECT_TRUE(dir->vtepMap(vtepIp("10.0.78.31"))->active());
}

struct RefusedSwitchInfo {
    char const * routers;
    char const * error;
};

void expectSwitchInfoRefused(std::initializer_list<RefusedSwitchInfo> all) {
    for (auto const & refused : all) {
        EXPECT_EQ(refusalBehind("routers", withRouters(refused.routers)), refused.error)
            << refused.routers;
    }
}

TEST(SwitchesAndVteps, RefuseBadSwitches) {
    expectSwitchInfoRefused(
        {{R"({"switches":[]})",
          ".switches: found an array, expected an object whose members are switch identifiers"},
         {R"({"switches":{"leaf1":["10.0.0.1"]}})",
          R"(.switches.leaf1: found an array, expected an object of "vteps")"},
         {R"({"switches":{"leaf1":{"vtep":[]}}})",
          R"(.switches.leaf1: found "vtep", expected "vteps")"},
         {R"({"switches":{"leaf1":{"vteps":[],"vteps":[]}}})",
          R"(.switches.leaf1: found "vteps" again, expected it once)"},
         {R"({"switches":{"leaf1":{"vteps":"10.0.0.1"}}})",
          R"(.switches.leaf1.vteps: found "10.0.0.1", expected a list of IP addresses)"},
         {R"({"switches":{"leaf1":{"vteps":[167772161]}}})",
          ".switches.leaf1.vteps[0]: found 167772161, expected an IPv4 or IPv6 address such as "
          "10.0.0.1 or 2001:db8::1"},
         {R"({"switches":{"leaf1":{"vteps":["10.0.0.1",""]}}})",
          R"(.switches.leaf1.vteps[1]: found "", expected an IPv4 or IPv6 address such as )"
          "10.0.0.1 or 2001:db8::1"},
         {R"({"switches":{"leaf1":{"vteps":["::1","10.0.0.1","0:0::1"]}}})",
          R"(.switches.leaf1.vteps[2]: found "0:0::1" again, expected it once)"},
         {R"({"switches":{"leaf1":{},"leaf\u0031":{}}})",
          R"(.switches: found "leaf\u0031" again, expected it once)"}});
}

TEST(SwitchesAndVteps, RefuseBadVteps) {
    expectSwitchInfoRefused(
        {{R"({"vteps":["10.0.0.1"]})",
          ".vteps: found an array, expected an object whose members are IP addresses"},
         {R"({"vteps":{"leaf1":{"active":true}}})",
          R"(.vteps: found "leaf1", expected an IPv4 or IPv6 address such as 10.0.0.1 or )"
          "2001:db8::1"},
         {R"({"vteps":{"10.0.0.1":true}})",
          R"(.vteps."10.0.0.1": found true, expected an object of "active" and "switches")"},
         {R"({"vteps":{"10.0.0.1":{"switches":[]}}})",
          R"(.vteps."10.0.0.1": found an object, expected "active" in it)"},
         {R"({"vteps":{"10.0.0.1":{"active":1}}})",
          R"(.vteps."10.0.0.1".active: found 1, expected true or false)"},
         {R"({"vteps":{"10.0.0.1":{"active":True}}})",
          R"(.vteps."10.0.0.1".active: found True, expected true or false)"},
         {R"({"vteps":{"10.0.0.1":{"active":"true"}}})",
          R"(.vteps."10.0.0.1".active: found "true", expected true or false)"},
         {R"({"vteps":{"10.0.0.1":{"active":true,"active":true}}})",
          R"(.vteps."10.0.0.1": found "active" again, expected it once)"},
         {R"({"vteps":{"10.0.0.1":{"active":true,"flag":true}}})",
          R"(.vteps."10.0.0.1": found "flag", expected "active" or "switches")"},
         {R"({"vteps":{"10.0.0.1":{"active":true,"switches":{}}}})",
          R"(.vteps."10.0.0.1".switches: found an object, expected a list of switch )"
          "identifiers"},
         {R"({"vteps":{"10.0.0.1":{"active":true,"switches":["leaf1",2]}}})",
          R"(.vteps."10.0.0.1".switches[1]: found 2, expected a switch identifier, a text)"},
         {R"({"vteps":{"10.0.0.1":{"active":true,"switches":["leaf1","leaf\u0031"]}}})",
          R"(.vteps."10.0.0.1".switches[1]: found "leaf\u0031" again, expected it once)"},
         {R"({"vteps":{"2001:db8::1":{"active":true},"2001:db8:0::1":{"active":true}}})",
          R"(.vteps: found "2001:db8:0::1" again, expected it once)"}});
}

TEST(SwitchesAndVteps, RefuseTheFirstUndescribedVtepOfASwitch) {
    expectSwitchInfoRefused(
        {{R"({"switches":{"leaf1":{"vteps":["10.0.0.1"]}}})",
          R"(.switches.leaf1.vteps[0]: found "10.0.0.1", expected an address that stands in )"
          R"("vteps")"},
         {R"({"vteps":{"10.0.0.1":{"active":true},"10.0.0.4":{"active":true}},
              "switches":{"leaf2":{"vteps":["10.0.0.1"]},
                          "leaf1":{"vteps":["10.0.0.4","10.0.0.3","10.0.0.2"]},
                          "leaf0":{"vteps":["10.0.0.9","10.0.0.2"]}}})",
          R"(.switches.leaf1.vteps[1]: found "10.0.0.3", expected an address that stands in )"
          R"("vteps")"},
         {R"({"switches":{"leaf1":{"vteps":["::ffff:10.0.0.1"]}},
              "vteps":{"10.0.0.1":{"active":true}}})",
          R"(.switches.leaf1.vteps[0]: found "::ffff:10.0.0.1", expected an address that )"
          R"(stands in "vteps")"}});
}

TEST(SwitchesAndVteps, ReportTheLineOfAnUndescribedVtep) {
    EXPECT_EQ(refusal("{\"routers\":{\"switches\":{\n \"leaf1\":{\"vteps\":[\"10.0.0.1\",\n"
                      "   \"10.0.0.2\"]}},\n\"vteps\":{\"10.0.0.1\":{\"active\":true}}}}"),
              "3:4: routers.switches.leaf1.vteps[1]: found \"10.0.0.2\", expected an address that "
              "stands in \"vteps\"");
}

} // namespace

} // namespace vxshow::test
