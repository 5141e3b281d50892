#include "tests/vxshow/mount/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

TEST(DocumentReader, MountsNothingWhereNothingIsWritten) {
    for (auto const * received : {"", R"(,"received":{})"}) {
        auto const mount = mounted(
            std::string(R"({"format":"vxlan-controller-state","version":1)") + received + "}");
        EXPECT_FALSE(mount.received.switches);
        EXPECT_FALSE(mount.received.sources);
        EXPECT_FALSE(mount.received.evpn);
    }
}

TEST(DocumentReader, TellsAnEmptySourceFromAnAbsentOne) {
    auto const mount = mounted(withReceived(R"({"switches":{},"sources":{"HSC":{}},"evpn":{}})"));
    ASSERT_TRUE(mount.received.switches);
    EXPECT_EQ(mount.received.switches->size(), 0);
    ASSERT_TRUE(mount.received.sources);
    ASSERT_TRUE(mount.received.sources->vniStatusDir("HSC"));
    EXPECT_EQ(mount.received.sources->vniStatusDir("HSC")->vniStatusV2().size(), 0);
    EXPECT_FALSE(mount.received.sources->vniStatusDir("QVX"));
    ASSERT_TRUE(mount.received.evpn);
    EXPECT_FALSE(mount.received.evpn->hostFloodTable("EVPN"));
}

TEST(DocumentReader, TakesFormatAndVersionAnywhere) {
    auto const mount = mounted(
        R"( {"received":{"sources":{"QVX":{"7":{}},"HSC":{}}},"version":1 ,
             "format":"vxlan\u002dcontroller-state"} )");
    EXPECT_TRUE(mount.received.sources->vniStatusDir("QVX")->vniStatusV2(Vxlan::Vni(7)));
}

TEST(DocumentReader, KeepsTheNamesOfSwitchesAsTheyAre) {
    auto const mount = mounted(withReceived(
        R"({"switches":{"leaf1":{},"Leaf1":{},"":{},"he said \"leaf\"":{},"\ud83c\udf3f":{},)"
        R"("a\u0000b":{},"HSC":{},"100%":{}}})"));
    EXPECT_EQ(mount.received.switches->size(), 8);
    using namespace std::string_view_literals;
    for (auto const name : {"leaf1"sv, "Leaf1"sv, ""sv, "he said \"leaf\""sv, "\U0001f33f"sv,
                            "a\0b"sv, "HSC"sv, "100%"sv}) {
        EXPECT_TRUE(switchOf(mount, name)) << name;
    }
}

struct Refused {
    std::string document;
    std::string error;
};

void expectRefused(std::initializer_list<Refused> all) {
    for (auto const & refused : all) {
        EXPECT_EQ(refusal(refused.document), refused.error) << refused.document;
    }
}

std::string const format = R"("format":"vxlan-controller-state")";
std::string const version = R"("version":1)";

TEST(DocumentReader, RefusesABadHead) {
    expectRefused(
        {{"{}", R"(1:1: found an object, expected "format" in it)"},
         {" \n {" + version + "}", R"(2:2: found an object, expected "format" in it)"},
         {"{" + format + "}", R"(1:1: found an object, expected "version" in it)"},
         {"{" + format + "," + format + "}", R"(1:36: found "format" again, expected it once)"},
         {"{" + version + "," + version + "}", R"(1:14: found "version" again, expected it once)"},
         {R"({"format":"vxlan-controller-State"})",
          R"(1:11: format: found "vxlan-controller-State", expected "vxlan-controller-state")"},
         {R"({"format":1})", R"(1:11: format: found 1, expected "vxlan-controller-state")"},
         {R"({"version":2})", "1:12: version: found 2, expected 1"},
         {R"({"version":0})", "1:12: version: found 0, expected 1"},
         {R"({"version":1.0})", "1:12: version: found 1.0, expected 1"},
         {R"({"version":"1"})", R"(1:12: version: found "1", expected 1)"},
         {R"({"version":4294967297})", "1:12: version: found 4294967297, expected 1"},
         {R"({"advertised":{}})",
          R"(1:2: found "advertised", expected "format", "version" or "received")"},
         {R"({"routers":{}})",
          R"(1:2: found "routers", expected "format", "version" or "received")"},
         {R"({"received":{},"received":{}})",
          R"(1:16: found "received" again, expected it once)"}});
}

TEST(DocumentReader, RefusesBadReceivedState) {
    expectRefused(
        {{R"({"received":null})",
          "1:13: received: found null, expected an object of published state"},
         {R"({"received":{"switch":{}}})",
          R"(1:14: received: found "switch", expected "switches", "sources" or "evpn")"},
         {R"({"received":{"evpn":{},"evpn":{}}})",
          R"(1:24: received: found "evpn" again, expected it once)"},
         {R"({"received":{"switches":[]}})",
          "1:25: received.switches: found an array, expected an object whose members are "
          "switches"},
         {R"({"received":{"switches":{"leaf1":[]}}})",
          "1:34: received.switches.leaf1: found an array, expected an object whose members "
          "are VNIs"},
         {R"({"received":{"switches":{"leaf1":{},)"
          "\n"
          R"("leaf\u0031":{}}}})",
          R"(2:1: received.switches: found "leaf\u0031" again, expected it once)"},
         {R"({"received":{"sources":{"EVPN":{}}}})",
          R"(1:25: received.sources: found "EVPN", expected "HSC" or "QVX")"},
         {R"({"received":{"sources":{"hsc":{}}}})",
          R"(1:25: received.sources: found "hsc", expected "HSC" or "QVX")"},
         {R"({"received":{"sources":{"HSC":{},"HSC":{}}}})",
          R"(1:34: received.sources: found "HSC" again, expected it once)"},
         {R"({"received":{"sources":{"QVX":{"1":{"arp":1}}}}})",
          R"(1:43: received.sources.QVX."1".arp: found 1, expected an object whose members )"
          "are IP addresses"},
         {R"({"received":{"evpn":{"HSC":{}}}})",
          R"(1:22: received.evpn: found "HSC", expected "EVPN")"},
         {R"({"received":{"evpn":{"EVPN":{},"EVPN":{}}}})",
          R"(1:32: received.evpn: found "EVPN" again, expected it once)"}});
}

} // namespace

} // namespace vxshow::test
