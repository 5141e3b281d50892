#include "vxshow/sources/ovsdb/ServerChoice.h"

#include "tests/unit/vxshow/sources/ovsdb/ScriptedServers.h"
#include "vxshow/sources/Failure.h"

#include <vector>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using namespace std::chrono_literals;

constexpr char const * hangs = "exec sleep 60";

std::string status(std::string const & cluster, std::string const & rest) {
    return R"(echo '[{"rows":[{"cid":)" + cluster + R"(,"connected":true,)" + rest + "}]}]'";
}

std::string member(bool leader) {
    return status(R"(["uuid","00000000-0000-0001-0000-000000000002"])",
                  std::string(R"("index":17,"model":"clustered","leader":)") +
                      (leader ? "true" : "false"));
}

std::string const leader = member(true);
std::string const follower = member(false);

/// As ovsdb-server 3.1 answers.
std::string const alone =
    status(R"(["set",[]])", R"("index":["set",[]],"leader":true,"model":"standalone")");
std::string const relay =
    status(R"(["set",[]])", R"("index":["set",[]],"leader":false,"model":"relay")");

std::string cutOff(std::string answer) {
    answer.replace(answer.find("true"), 4, "false");
    return answer;
}

std::string after(std::string const & seconds, std::string const & script) {
    return "sleep " + seconds + "; " + script;
}

std::string fails(std::string const & error) {
    return "echo 'ovsdb-client: " + error + "' >&2; exit 1";
}

} // namespace

class ServerChoice : public ScriptedServers {
protected:
    /// The remote that is chosen within `limit`, or why none is.
    static std::string chosen(std::vector<std::string> const & remotes,
                              std::chrono::milliseconds limit = 2min) {
        DatabaseAddress const address{.remotes = remotes};
        sources::ovsdb::ServerChoice servers(address);
        try {
            return servers.server(Deadline::in(limit)).remote();
        } catch (Failure const & failure) {
            return failure.what();
        }
    }
};

TEST_F(ServerChoice, SucceedsIfAllServersTakeLongerThanTheFirstQuestion) {
    auto const slow = after("1.3", follower);
    EXPECT_EQ(chosen({server("a", after("1.3", leader)), server("b", slow), server("c", slow)}),
              remoteOf("b"));
}

TEST_F(ServerChoice, WaitsForASlowLeaderAlthoughOthersAnswer) {
    EXPECT_EQ(chosen({server("a", after("1.1", leader)), server("b", follower)}), remoteOf("b"));
}

TEST_F(ServerChoice, LeavesTimeToReadAlthoughAServerHangs) {
    std::vector<std::string> const remotes{server("a", hangs), server("b", leader),
                                           server("c", follower)};
    auto const start = Deadline::Clock::now();
    EXPECT_EQ(chosen(remotes, 20s), remoteOf("c"));
    EXPECT_LT(Deadline::Clock::now() - start, 10s);
    EXPECT_EQ(chosen(remotes, 1s), remoteOf("c"));
}

TEST_F(ServerChoice, AServerThatHungAndThenFailsHasFailed) {
    auto const start = Deadline::Clock::now();
    EXPECT_EQ(chosen({server("a", hangs, "echo nonsense"), server("b", hangs, "echo nonsense")}),
              "broken answer: the server's own status: 1:1: found nonsense, "
              "expected an array of 1 answer");
    EXPECT_LT(Deadline::Clock::now() - start, 60s);
}

TEST_F(ServerChoice, EachReasonNamesItsServer) {
    EXPECT_EQ(chosen({server("a", fails("failed to connect to \"a\" (Connection refused)")),
                      server("b", fails("open of the key failed (Permission denied)")),
                      server("c", fails("open of the key failed (Permission denied)"))}),
              "unreachable: " + remoteOf("a") +
                  ": failed to connect to \"a\" (Connection refused); permission: " +
                  remoteOf("b") + ": open of the key failed (Permission denied)");
}

TEST_F(ServerChoice, AServerIsNotNamedTwice) {
    auto const refused = [this](std::string const & name) {
        return "failed to connect to \"" + remoteOf(name) + "\" (Connection refused)";
    };
    EXPECT_EQ(chosen({server("a", fails(refused("a"))), server("b", fails(refused("b")))}),
              "unreachable: " + refused("a") + "; unreachable: " + refused("b"));
}

TEST_F(ServerChoice, ThreeReasonsAreGivenAndTheOthersCounted) {
    std::vector<std::string> remotes;
    for (std::string const name : {"a", "b", "c", "d", "e"}) {
        remotes.push_back(server(name, fails("failure " + name)));
    }
    EXPECT_EQ(chosen(remotes),
              "broken answer: " + remoteOf("a") + ": failure a; broken answer: " + remoteOf("b") +
                  ": failure b; broken answer: " + remoteOf("c") + ": failure c; and 2 more");
}

TEST_F(ServerChoice, AReasonThatAllShareNamesNoServer) {
    auto const without = "echo '[{\"rows\":[]}]'";
    EXPECT_EQ(chosen({server("a", without), server("b", without)}),
              "no such schema: the server has no database hardware_vtep");
    EXPECT_EQ(chosen({server("a", hangs), server("b", hangs)}, 500ms),
              "time limit: no answer within 0.5 s");
}

TEST_F(ServerChoice, AFailureIsReportedBeforeTheTimeLimit) {
    EXPECT_EQ(chosen({server("a", hangs), server("b", fails("no such thing"))}, 1s),
              "broken answer: " + remoteOf("b") + ": no such thing; time limit: " + remoteOf("a") +
                  ": no answer within 1 s");
}

TEST_F(ServerChoice, WithoutALeaderNoneIsChosen) {
    EXPECT_EQ(chosen({server("a", follower), server("b", follower), server("c", hangs)}, 1s),
              "unreachable: no leader among the 2 of 3 servers that answer");
}

TEST_F(ServerChoice, OfRelaysIsAnyThatIsConnected) {
    EXPECT_EQ(chosen({server("a", relay), server("b", relay)}), remoteOf("a"));
    EXPECT_EQ(chosen({server("a", cutOff(relay)), server("b", relay)}), remoteOf("b"));
    EXPECT_EQ(chosen({server("a", fails("gone")), server("b", relay)}), remoteOf("b"));
    EXPECT_EQ(chosen({server("a", cutOff(relay)), server("b", fails("gone"))}, 1s),
              "unreachable: no server behind the 1 of 2 relays that answer");
}

TEST_F(ServerChoice, AStandaloneServerIsNotOneOfSeveral) {
    EXPECT_EQ(chosen({server("a", alone), server("b", alone)}),
              "broken answer: several remotes, but " + remoteOf("a") + " is a standalone server");
    EXPECT_EQ(chosen({server("a", leader), server("b", alone)}),
              "broken answer: several remotes, but " + remoteOf("b") + " is a standalone server");
    EXPECT_EQ(chosen({server("a", leader), server("b", relay)}), "broken answer: " + remoteOf("a") +
                                                                     " and " + remoteOf("b") +
                                                                     " are not of one cluster");
}

} // namespace vxshow::test
