#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

/// Names in filters, on live sources: FRR, whose vtysh is a script here.

namespace {

/// A fabric with the switches leaf1 and leaf2, on which the logical router red runs. `more` is
/// added at the end.
std::string fabricOfTwoSwitches(std::string const & more = "") {
    std::string text;
    for (std::string const number : {"1", "2"}) {
        text += R"([[source]]
kind = "frr"
name = "leaf)" + number +
                R"("
system_id = "001c.7300.000)" +
                number + R"("
remote_shell = false
command = ["sh", "-c", '''
for word; do
    case $word in show*) echo "host# $word";; esac
    case $word in
    "show evpn vni detail json") echo '[
        {"vni":10,"type":"L2","vrf":"red","vtepIp":"10.0.0.)" +
                number + R"("},
        {"vni":9001,"type":"L3","tenantVrf":"red","localVtepIp":"10.0.0.)" +
                number + R"(","routerMac":"02:00:00:00:00:01"}]';;
    "show vrf vni json") echo '{"vrfs":[{"vrf":"red","state":"Up"}]}';;
    "show interface vrf red json") echo '{"lo":{}}';;
    esac
done
''', "vtysh"]
)";
    }
    return text + more;
}

std::string const deadSource = R"([[source]]
kind = "frr"
name = "leaf3"
command = ["false"]
)";

Finished listingOf(std::vector<std::string> arguments, std::string const & fabric) {
    arguments.insert(arguments.begin(), {"--fabric", "-"});
    return runVxshow(arguments, {.input = fabric});
}

} // namespace

TEST(LiveNames, ASwitchIsFoundByItsNameOrItsIdentifier) {
    std::string const fabric = fabricOfTwoSwitches();
    std::string const second =
        R"({"logicalRouterMap":{"red":{"switches":[{"switchId":"00:1c:73:00:00:02",)"
        R"("vtepIp":"10.0.0.2"}]}}})"
        "\n";
    for (char const * name : {"leaf2", "00:1c:73:00:00:02", "001c73000002", "name:leaf2", "*2"}) {
        Finished const finished = listingOf({"--json", "router", "map", "--switch", name}, fabric);
        EXPECT_EQ(finished.out, second) << name;
        EXPECT_EQ(finished.err, "");
        EXPECT_EQ(finished.status, 0);
    }
    EXPECT_EQ(listingOf({"--json", "router", "map", "--switch", "leaf1,leaf2"}, fabric).out,
              listingOf({"--json", "router", "map"}, fabric).out);
}

TEST(LiveNames, ACaptureKnowsTheNamesOfItsSwitches) {
    Finished const capture = listingOf({"capture", "-"}, fabricOfTwoSwitches());
    ASSERT_EQ(capture.status, 0) << capture.err;
    EXPECT_EQ(answer(capture.out, {"--json", "router", "map", "--switch", "leaf2"}),
              R"({"logicalRouterMap":{"red":{"switches":[{"switchId":"00:1c:73:00:00:02",)"
              R"("vtepIp":"10.0.0.2"}]}}})"
              "\n");
}

TEST(LiveNames, ASwitchThatNoSourceHasIsReported) {
    Finished const finished =
        listingOf({"--json", "router", "map", "--switch", "leef2"}, fabricOfTwoSwitches());
    EXPECT_EQ(finished.out, "{\"logicalRouterMap\":{}}\n");
    EXPECT_EQ(finished.err,
              "vxshow: --switch: no switch is named \"leef2\"; did you mean leaf2?\n");
    EXPECT_EQ(finished.status, 4);
}

/// Which of the sources is meant must be known before the one is taken for the other. Another word
/// in the file, or another role, is no reason.
TEST(LiveNames, ASwitchThatIsCalledAsAWordOfTheFilterIsRemarkedOn) {
    for (std::string const word : {"all", "hsc", "qvx", "evpn"}) {
        std::string fabric = fabricOfTwoSwitches();
        fabric.replace(fabric.find("leaf1"), 5, word);
        std::string const remark = "vxshow: standard input:3:8: source[0].name: --source " + word +
                                   " is " + (word == "all" ? "every switch" : "another source") +
                                   "; --source name:" + word + " is this one\n";
        EXPECT_EQ(listingOf({"mac", "received"}, fabric).err, remark);
        Finished const named =
            listingOf({"--json", "mac", "received", "--source", "name:" + word}, fabric);
        EXPECT_EQ(named.err, remark);
        EXPECT_EQ(named.status, 0);
        EXPECT_EQ(listingOf({"router", "map"}, fabric).err, remark);
        fabric.insert(fabric.find("system_id"), "role = 'evpn'\n");
        EXPECT_EQ(listingOf({"mac", "received"}, fabric).err, "");
    }
}

TEST(LiveNames, TheRemarkOnSuchASwitchIsMadeOncePerFile) {
    std::string fabric = fabricOfTwoSwitches();
    fabric.replace(fabric.find("leaf2"), 5, "evpn");
    TemporaryFile const file(fabric);
    Process process({"--fabric", file.path(), "--watch", "1", "--json", "mac", "received"});
    // Each frame has its time in a line before it.
    std::string frames;
    auto const count = [&] { return std::count(frames.begin(), frames.end(), '\n'); };
    for (int tries = 0; tries < 100 && count() < 6; ++tries) {
        frames += process.readSome(65536);
    }
    EXPECT_GE(count(), 6);
    process.signal(SIGINT);
    auto const line =
        1 + std::count(fabric.begin(),
                       fabric.begin() + static_cast<std::ptrdiff_t>(fabric.find("evpn\"")), '\n');
    EXPECT_EQ(process.finish().err, "vxshow: " + file.path() + ":" + std::to_string(line) +
                                        ":8: source[1].name: --source evpn is another source; "
                                        "--source name:evpn is this one\n");
}

TEST(LiveNames, ASourceThatFailedCanBeTheOneThatWasNamed) {
    Finished const finished = listingOf({"--json", "mac", "received", "--source", "leaf3"},
                                        fabricOfTwoSwitches(deadSource));
    EXPECT_EQ(finished.out, "{\"switches\":{},\"nonSwitchSources\":{}}\n");
    EXPECT_NE(finished.err.find("vxshow: leaf3: "), std::string::npos) << finished.err;
    EXPECT_NE(finished.err.find("\nvxshow: --source: no source of those that answered is named "
                                "\"leaf3\"\n"),
              std::string::npos)
        << finished.err;
    EXPECT_EQ(finished.status, 3);
}
