#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <csignal>
#include <gtest/gtest.h>

namespace {

std::string const namedState = snapshotWith("received", R"({"switches":{
    "leaf1":{"10":{"unicast":{"00:1c:73:00:00:01":{"vtep":"10.0.0.1"}}}},"leaf3":{}}})");

UnknownName misspelt(std::vector<std::string> filters) {
    filters.insert(filters.begin(), {"mac", "received"});
    return answerOfUnknownName(namedState, filters);
}

} // namespace

TEST(UnknownNames, AMisspeltSourceIsReportedWithTheOneThatWasProbablyMeant) {
    auto const [out, line] = misspelt({"--source", "LEAF3"});
    EXPECT_EQ(line, "--source: no source is named \"LEAF3\"; did you mean leaf3?");
    EXPECT_EQ(out, answer(namedState, {"mac", "received", "--source", "leaf3"}));
    EXPECT_EQ(misspelt({"--source", "HSC"}).line,
              "--source: no source is named \"HSC\"; did you mean hsc?");
    EXPECT_EQ(misspelt({"--source", "spine1"}).line, "--source: no source is named \"spine1\"");
}

TEST(UnknownNames, TheOthersOfAListAreShown) {
    auto const [out, line] = misspelt({"--source", "leaf1,laef3"});
    EXPECT_EQ(line, "--source: no source is named \"laef3\"; did you mean leaf3?");
    EXPECT_EQ(out, answer(namedState, {"mac", "received", "--source", "leaf1"}));
}

TEST(UnknownNames, APatternThatMatchesNothingIsReported) {
    EXPECT_EQ(misspelt({"--source", "spine*"}).line,
              "--source: no source has a name like \"spine*\"");
}

TEST(UnknownNames, EachNameHasALine) {
    TemporaryFile const state(namedState);
    Finished const finished = runVxshow(
        {"--state", state.path(), "mac", "received", "--source", "spine1,spine2", "--json"});
    EXPECT_EQ(finished.status, 4);
    EXPECT_EQ(finished.out, "{\"switches\":{},\"nonSwitchSources\":{}}\n");
    EXPECT_EQ(finished.err, "vxshow: --source: no source is named \"spine1\"\n"
                            "vxshow: --source: no source is named \"spine2\"\n");
}

TEST(UnknownNames, AWordForASourceIsNoName) {
    for (char const * word : {"all", "hsc", "qvx", "evpn"}) {
        answer(namedState, {"mac", "received", "--source", word});
    }
    EXPECT_EQ(misspelt({"--source", "name:all"}).line, "--source: no source is named \"all\"");
}

TEST(UnknownNames, ControlCharactersInANameAreEscaped) {
    EXPECT_EQ(misspelt({"--source", "\x1b[2J\""}).line,
              "--source: no source is named \"\\x1b[2J\"\"");
}

TEST(UnknownNames, AValueThatIsNoNameAndMatchesNothingIsNotReported) {
    answer(namedState,
           {"mac", "received", "--vni", "77,78", "--mac", "02:00/16", "--vtep", "192.0.2.0/24"});
    answer(namedState, {"arp", "received", "--ip", "192.0.2.0/24"});
    answer(namedState, {"router", "routes", "--prefix", "192.0.2.0/24,::/0"});
}

TEST(UnknownNames, TheCollectedObjectsHaveTheSameStatus) {
    EXPECT_EQ(
        answerOfUnknownName(namedState, {"model", "--of", "mac received", "--source", "x"}).line,
        "--source: no source is named \"x\"");
}

TEST(UnknownNames, EachReadingOfAWatchHasTheLineAmongItsRemarks) {
    TemporaryFile const state(namedState);
    Process process(
        {"--state", state.path(), "--watch", "1", "mac", "received", "--source", "LEAF3"});
    std::string out;
    // When the second listing begins, the remarks on the first have been written.
    for (std::string const head = "Received Mac Address Table";
         out.find(head) == out.rfind(head) && process.pid() > 0;) {
        auto const more = process.readSome(1000);
        ASSERT_NE(more, "") << out;
        out += more;
    }
    process.signal(SIGINT);
    Finished const finished = process.finish();
    EXPECT_EQ(finished.err.substr(0, 66),
              "vxshow: --source: no source is named \"LEAF3\"; did you mean leaf3?\n");
    EXPECT_EQ(finished.status, 130);
}

TEST(UnknownNames, AStateThatCannotBeReadIsStatus1) {
    Finished const finished =
        runVxshow({"--state", "/nonexistent", "mac", "received", "--source", "x"});
    EXPECT_EQ(finished.status, 1);
}
