#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <regex>

/// The command `state`, and what captures say of where they come from.
namespace {

std::string stateSource(std::string const & name, std::string const & script,
                        std::string const & more = "") {
    return "[[source]]\nkind = \"frr\"\nname = \"" + name + "\"\n" + more +
           "command = [\"sh\", \"-c\", '''" + script + "''', \"vtysh\"]\n";
}

/// As a zebra with one VNI whose VTEP in the flood list is IPv6.
constexpr char const * zebra = R"(for word; do case $word in
show*)
  echo "host# $word"
  case $word in
  *vni\ detail*) echo '[{"vni":10,"type":"L2","vxlanInterface":"vx10","vtepIp":"10.0.0.1",
    "numMacs":1,"numRemoteVteps":1,"remoteVteps":[{"ip":"fd00::2","flood":"HER"}]}]';;
  *mac\ vni\ all*) echo '{"10":{"macs":{"02:00:00:00:00:01":{"type":"local","localSequence":0,
    "remoteSequence":0,"isDuplicate":true}}}}';;
  *) echo '{}';;
  esac;;
esac; done)";

constexpr char const * broken = "echo 'no route to host' >&2; exit 1";

/// Replaces what differs from run to run: times, and the program's version.
std::string steady(std::string const & text) {
    auto const times = std::regex_replace(text, std::regex(R"(20\d\d-[^ "]*T[^ "]*Z)"),
                                          "2026-11-23T02:10:11.125Z");
    return std::regex_replace(times, std::regex(R"(vxshow \d+\.\d+\.\d+)"), "vxshow 1.0.0");
}

Finished live(std::vector<std::string> const & arguments, std::string const & fabric) {
    std::vector<std::string> all{"--fabric", "-"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runVxshow(all, {.input = fabric});
}

std::string bothSources() {
    return stateSource("leaf1", zebra) + stateSource("leaf2", broken, "role = \"evpn\"\n");
}

std::string capturedIncomplete() {
    auto const finished = live({"capture", "--incomplete", "-"}, bothSources());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.err, "vxshow: leaf1: 1 entry left out, its VTEP is IPv6: flood list in VNI "
                            "10 at fd00::2\n"
                            "vxshow: leaf2: broken answer: no route to host\n");
    return finished.out;
}

constexpr char const * listed =
    "Read 2026-11-23T02:10:11.125Z by vxshow 1.0.0\n"
    "\n"
    "Source  Kind  Role    State   Read                      Switches  VNIs  Local MACs  Remote "
    "MACs  Local ARP  Remote ARP  Routers  Routes  Left out\n"
    "leaf1   frr   switch  read    2026-11-23T02:10:11.125Z         1     1           1            "
    "0          0           0        0       0         1\n"
    "leaf2   frr   evpn    failed  -                                -     -           -            "
    "-          -           -        -       -         -\n"
    "\n"
    "leaf1: 1 entry left out, its VTEP is IPv6: flood list in VNI 10 at fd00::2\n"
    "leaf2: broken answer: no route to host\n"
    "\n"
    "Tables      Of        Sources  VNIs  MACs  Multipath  Flood VTEPs  ARP\n"
    "received    switches        1     1     1          0            1    0\n"
    "advertised  switches        -     1     0          0            0    0\n"
    "\n"
    "Routers: 0, with 0 ports and 0 routes; switches with VTEPs: 1\n";

} // namespace

TEST(State, OfLiveSourcesSaysWhatBecameOfEach) {
    auto const finished = live({"state"}, bothSources());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(steady(finished.out), listed);
}

TEST(State, OfASnapshotIsThatOfTheSourcesItWasMadeOf) {
    auto const finished = runVxshow({"--state", "-", "state"}, {.input = capturedIncomplete()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(steady(finished.out), listed);
    EXPECT_EQ(steady(finished.err), "vxshow: leaf2: broken answer: no route to host, when the "
                                    "snapshot was made, 2026-11-23T02:10:11.125Z\n");
}

TEST(State, AsJsonHasTheOriginAsSnapshotsHaveIt) {
    auto const finished =
        runVxshow({"--state", "-", "state", "--json"}, {.input = capturedIncomplete()});
    EXPECT_EQ(
        steady(finished.out),
        R"({"origin":{"made":"2026-11-23T02:10:11.125Z","version":"vxshow 1.0.0","sources":[)"
        R"({"name":"leaf1","kind":"frr","role":"switch","read":"2026-11-23T02:10:11.125Z",)"
        R"("remarks":"1 entry left out, its VTEP is IPv6: flood list in VNI 10 at fd00::2",)"
        R"("counts":{"switches":1,"vnis":1,"localMacs":1,"floods":1,"ipv6Vteps":1}},)"
        R"({"name":"leaf2","kind":"frr","role":"evpn","failure":"broken answer: no route to host"}]},)"
        R"("counts":{"tables":[{"side":"received","of":"switches","sources":1,"vnis":1,"macs":1,)"
        R"("multipath":0,"floods":1,"bindings":0},{"side":"advertised","of":"switches","vnis":1,)"
        R"("macs":0,"multipath":0,"floods":0,"bindings":0}],"routers":0,"ports":0,"routes":0,)"
        R"("switchesWithVteps":1}})"
        "\n");
}

TEST(State, OfASnapshotMadeByHandIsUnknown) {
    EXPECT_EQ(answer(R"({"format":"vxlan-controller-state","version":1})", {"state"}),
              "Origin unknown: the state does not say where it comes from\n"
              "\n"
              "Tables  Of  Sources  VNIs  MACs  Multipath  Flood VTEPs  ARP\n"
              "\n"
              "Routers: 0, with 0 ports and 0 routes; switches with VTEPs: 0\n");
}

TEST(State, CountsBothKindsOfWhatWasLeftOutHoweverManyThereAre) {
    auto const text =
        answer(R"({"format":"vxlan-controller-state","version":1,"origin":)"
               R"({"made":"2026-11-23T02:10:11Z","version":"x","sources":[{"name":"a",)"
               R"("kind":"frr","role":"switch","read":"2026-11-23T02:10:11Z",)"
               R"("counts":{"leftOut":4294967295,"ipv6Vteps":1}}]}})",
               {"state"});
    EXPECT_NE(text.find(" 4294967296\n"), std::string::npos) << text;
}

TEST(State, HasNoFilters) {
    EXPECT_EQ(refused({"state", "--vni", "10"}),
              "'--vni': not expected here; see 'vxshow state --help'");
}

TEST(Capture, OfAnIncompleteStateIsRefused) {
    auto const finished = live({"capture", "-"}, bothSources());
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_TRUE(finished.err.ends_with(
        "vxshow: leaf2: broken answer: no route to host\n"
        "vxshow: capture: nothing is saved, since a source could not be read; --incomplete saves "
        "the others\n"))
        << finished.err;
}

TEST(Capture, OfAnIncompleteSnapshotIsRefusedToo) {
    auto const snapshot = capturedIncomplete();
    EXPECT_EQ(runVxshow({"--state", "-", "capture", "-"}, {.input = snapshot}).status, 1);
    auto const again =
        runVxshow({"--state", "-", "capture", "--incomplete", "-"}, {.input = snapshot});
    EXPECT_EQ(again.status, 3);
    EXPECT_EQ(again.out, snapshot);
}

TEST(Capture, KeepsWhatNoListingShows) {
    auto const finished = live({"capture", "-"}, stateSource("leaf1", zebra));
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.out.find(R"("details":{"leaf1":{"macs":[{"vni":10,)"
                                R"("mac":"02:00:00:00:00:01","duplicate":true}]}})"),
              std::string::npos)
        << finished.out;
}

TEST(Listing, NamesOnlyWhatConcernsIt) {
    auto const fabric = stateSource("leaf1", zebra);
    EXPECT_EQ(live({"mac", "received"}, fabric).err, "");
    EXPECT_EQ(live({"arp", "advertised"}, fabric).err, "");
    EXPECT_EQ(live({"router", "routes"}, fabric).err, "");
    EXPECT_EQ(live({"mac", "advertised"}, fabric).err,
              "vxshow: leaf1: 1 entry left out, its VTEP is IPv6: flood list in VNI 10 at "
              "fd00::2\n");
}
