#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

std::string capturedText(std::string const & snapshot) {
    return answer(snapshot, {"capture", "-"});
}

} // namespace

TEST(Capture, WritesTheWholeStateOrderedByKey) {
    EXPECT_EQ(capturedText(R"({"routers": {
"status": {"prod": {
  "routes": {"::/0": [], "10.0.0.0/8": ["2001:db8::2", "10.9.0.0"]},
  "uplinks": {"10.9.0.1/31": {"mac": "0200.0000.000B", "vtep": "2001:db8:0::1",
    "ports": [{"port": "Ethernet1", "vlan": 1}, {"vlan": 0, "port": "Ethernet1"}]}},
  "ports": {"2001:db8::3/64": {"vni": 11, "mac": "02:00:00:00:00:0b"},
    "10.1.2.3/24": {"vni": 10, "mac": "02:00:00:00:00:0b", "vtep": "10.0.0.1"}}},
  "idle": {}},
"published": {"02-00-00-00-00-0A": {"path/prod": "Vxlan", "path": "other"},
  "02:00:00:00:00:09": {}},
"vteps": {"2001:db8::1": {"active": false},
  "10.0.0.1": {"active": true, "switches": ["leaf2", "02:00:00:00:00:0a"]}},
"switches": {"leaf2": {}, "02:00:00:00:00:0a": {"vteps": ["2001:db8::1", "10.0.0.1"]}}},
"advertised": {
"evpn": {"EVPN": {"flood": {}, "hosts": {}}},
"sources": {"HSC": {"16777215": {}}},
"vnis": {"abc": {}, "1\u0030": {"arp": {"2001:db8::9": {"mac": "0200.0000.0001"},
  "10.0.0.9": {"mac": "0200.0000.0002", "preference": 255, "changes": 4294967295}}},
  "": {"arp": {}}}},
"received": {
"evpn": {"EVPN": {"flood": {"10": ["10.0.0.9", "10.0.0.10"], "9": []},
  "hosts": {"10": {"02:00:00:00:00:03": {"vtep": "10.0.0.3"}}}}},
"sources": {"QVX": {"7": {"unicast": {}}}, "HSC": {}},
"switches": {"leaf10": {}, "leaf1": {"100": {}, "20": {
  "flood": {"00:00:00:00:00:00": ["10.0.0.2", "10.0.0.1"]},
  "multipath": {"0200.0000.0002": ["10.0.0.2", "10.0.0.1"], "0200.0000.0001": []},
  "unicast": {"0200.0000.0005": {"vtep": "10.0.0.1", "moves": 4294967295},
    "0200.0000.0004": {"vtep": "10.0.0.1", "moves": 0}}}}}},
"version": 1, "format": "vxlan-controller-state"})"),
              R"({"format":"vxlan-controller-state","version":1,)"
              R"("received":{"switches":{"leaf1":{"20":{)"
              R"("unicast":{"02:00:00:00:00:04":{"vtep":"10.0.0.1"},)"
              R"("02:00:00:00:00:05":{"vtep":"10.0.0.1","moves":4294967295}},)"
              R"("multipath":{"02:00:00:00:00:01":[],"02:00:00:00:00:02":["10.0.0.1","10.0.0.2"]},)"
              R"("flood":{"00:00:00:00:00:00":["10.0.0.1","10.0.0.2"]}},"100":{}},"leaf10":{}},)"
              R"("sources":{"HSC":{},"QVX":{"7":{}}},)"
              R"("evpn":{"EVPN":{"hosts":{"10":{"02:00:00:00:00:03":{"vtep":"10.0.0.3"}}},)"
              R"("flood":{"10":["10.0.0.9","10.0.0.10"]}}}},)"
              R"("advertised":{"vnis":{"":{},"10":{"arp":{)"
              R"("10.0.0.9":{"mac":"02:00:00:00:00:02","preference":255,"changes":4294967295},)"
              R"("2001:db8::9":{"mac":"02:00:00:00:00:01"}}},"abc":{}},)"
              R"("sources":{"HSC":{"16777215":{}}},"evpn":{"EVPN":{"hosts":{},"flood":{}}}},)"
              R"("routers":{"switches":{"02:00:00:00:00:0a":{"vteps":["10.0.0.1","2001:db8::1"]},)"
              R"("leaf2":{"vteps":[]}},)"
              R"("vteps":{"10.0.0.1":{"active":true,"switches":["02:00:00:00:00:0a","leaf2"]},)"
              R"("2001:db8::1":{"active":false}},)"
              R"("published":{"02:00:00:00:00:09":{},)"
              R"("02:00:00:00:00:0a":{"path":"other","path/prod":"Vxlan"}},)"
              R"("status":{"idle":{},"prod":{)"
              R"("ports":{"10.1.2.3/24":{"vni":10,"mac":"02:00:00:00:00:0b","vtep":"10.0.0.1"},)"
              R"("2001:db8::3/64":{"vni":11,"mac":"02:00:00:00:00:0b"}},)"
              R"("uplinks":{"10.9.0.1/31":{"mac":"02:00:00:00:00:0b","vtep":"2001:db8::1",)"
              R"("ports":[{"port":"Ethernet1"},{"port":"Ethernet1","vlan":1}]}},)"
              R"("routes":{"10.0.0.0/8":["10.9.0.0","2001:db8::2"],"::/0":[]}}}}})"
              "\n");
}

TEST(Capture, AbsentStaysAbsentAndEmptyStaysEmpty) {
    EXPECT_EQ(capturedText(R"({"format":"vxlan-controller-state","version":1})"),
              "{\"format\":\"vxlan-controller-state\",\"version\":1}\n");
    for (char const * state :
         {R"("received":{"switches":{}})", R"("received":{"sources":{}})",
          R"("received":{"evpn":{}})", R"("received":{"evpn":{"EVPN":{}}})",
          R"("received":{"evpn":{"EVPN":{"flood":{}}}})", R"("advertised":{"vnis":{}})",
          R"("advertised":{"sources":{}})", R"("advertised":{"evpn":{}})",
          R"("routers":{"published":{}})", R"("routers":{"status":{}})",
          R"("routers":{"switches":{},"vteps":{}})"}) {
        auto const document =
            std::string(R"({"format":"vxlan-controller-state","version":1,)") + state + "}\n";
        EXPECT_EQ(capturedText(document), document);
    }
}

TEST(Capture, NamesAreEscapedWhereJsonRequiresIt) {
    auto const document =
        snapshotWith("received", R"({"switches":{"\u0000\u001f\n\"\\/é\ud83d\ude00\u007f":{}}})");
    auto const once = capturedText(document);
    EXPECT_NE(once.find("\\u0000\\u001f\\n\\\"\\\\/é😀\x7f"), std::string::npos) << once;
    EXPECT_EQ(capturedText(once), once);
}

TEST(Capture, PrettyIsTheSameDocumentIndented) {
    EXPECT_EQ(answer(snapshotWith("received", R"({"switches":{"leaf1":{"10":{}}}})"),
                     {"--pretty", "capture", "-"}),
              R"({
  "format": "vxlan-controller-state",
  "version": 1,
  "received": {
    "switches": {
      "leaf1": {
        "10": {}
      }
    }
  }
}
)");
}

TEST(Capture, ListingOptionsChangeNothing) {
    auto const plain = capturedText(exampleFabric());
    EXPECT_EQ(answer(exampleFabric(), {"--json", "--dotted", "--revision", "1", "capture", "-"}),
              plain);
}

TEST(Capture, AnInterruptOnStandardOutputIsStatus130) {
    TemporaryFile const state(largeSnapshot(200'000));
    Process process({"--state", state.path(), "capture", "-"});
    process.readSome(1000);
    process.signal(SIGINT);
    auto const finished = process.finish();
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.err, "");
}

TEST(Capture, AClosedPipeEndsTheProgramSilently) {
    TemporaryFile const state(largeSnapshot(50'000));
    Process process({"--state", state.path(), "capture", "-"});
    process.readSome(100);
    process.closeReader();
    auto const finished = process.finish();
    EXPECT_EQ(finished.signal, SIGPIPE);
    EXPECT_EQ(finished.err, "");
}

TEST(Capture, NeedsAFile) {
    EXPECT_EQ(refused({"capture"}), "FILE is required");
    EXPECT_EQ(refused({"capture", ""}), "FILE: '': expected the name of a file");
    EXPECT_EQ(refused({"capture", "-", "x"}),
              "'x': not expected here; see 'vxshow capture --help'");
}

TEST(Capture, HasNoFilters) {
    Asked({"capture", "-"}, smallSnapshot())
        .knowsNone({"--vni", "--mac", "--source", "--vtep", "--router"});
}
