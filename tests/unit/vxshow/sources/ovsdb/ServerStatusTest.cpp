#include "vxshow/sources/ovsdb/ServerStatus.h"

#include "vxshow/sources/AnswerError.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

std::optional<ServerStatus> statusIn(std::string_view answer) {
    return readServerStatus(system::FileBytes::copyOf(answer));
}

std::string statusRefusal(std::string_view answer) {
    try {
        statusIn(answer);
    } catch (AnswerError const & error) {
        return error.what();
    }
    return "accepted";
}

constexpr sources::ovsdb::Uuid cluster{1, 2};

ServerStatus memberStatus(bool leads, std::int64_t index, bool connected = true) {
    return {.model = ServerStatus::Model::clustered,
            .cluster = cluster,
            .connected = connected,
            .leader = leads,
            .index = index};
}

constexpr ServerStatus relayStatus{.model = ServerStatus::Model::relay, .leader = false};

} // namespace

TEST(ServerStatus, OfAStandaloneServerAsItAnswers) {
    EXPECT_EQ(
        statusIn(R"([{"rows":[{"cid":["set",[]],"connected":true,"index":["set",[]],"leader":true,)"
                 R"("model":"standalone"}]}])"),
        ServerStatus());
}

TEST(ServerStatus, OfARelayAsItAnswers) {
    EXPECT_EQ(
        statusIn(
            R"([{"rows":[{"cid":["set",[]],"connected":true,"index":["set",[]],"leader":false,)"
            R"("model":"relay"}]}])"),
        relayStatus);
}

TEST(ServerStatus, OfAFollowerAsItAnswers) {
    EXPECT_EQ(statusIn(R"([{"rows":[{"cid":["uuid","00000000-0000-0001-0000-000000000002"],)"
                       R"("connected":true,"index":17,"leader":false,"model":"clustered"}]}])"),
              memberStatus(false, 17));
}

TEST(ServerStatus, IsNulloptWithoutTheDatabase) {
    EXPECT_EQ(statusIn(R"([{"rows":[]}])"), std::nullopt);
}

TEST(ServerStatus, AMalformedStatusIsRefusedWithItsPlace) {
    EXPECT_EQ(
        statusRefusal("[]"),
        "the server's own status: 1:1: found an array of fewer, expected an array of 1 answer");
    EXPECT_EQ(statusRefusal(R"([{"rows":[{"connected":1,"index":17,"leader":false}]}])"),
              "the server's own status: 1:24: [0].rows[0].connected: found 1, expected true or "
              "false");
    EXPECT_EQ(
        statusRefusal(R"([{"rows":[{"connected":true}]}])"),
        "the server's own status: 1:11: [0].rows[0]: found an object, expected \"cid\" in it");
    EXPECT_EQ(statusRefusal(R"([{"rows":[{"model":"other"}]}])"),
              "the server's own status: 1:20: [0].rows[0].model: found \"other\", expected "
              "\"standalone\", \"clustered\" or \"relay\"");
    EXPECT_EQ(statusRefusal("nonsense").substr(0, 29), "the server's own status: 1:1:");
}

TEST(ServerToRead, IsTheFirstStandaloneServer) {
    EXPECT_EQ(serverToRead({std::nullopt, ServerStatus(), ServerStatus()}), 1);
}

TEST(ServerToRead, IsAFollowerThatIsNotBehind) {
    EXPECT_EQ(serverToRead({memberStatus(true, 9), memberStatus(false, 8), memberStatus(false, 9)}),
              2);
    EXPECT_EQ(
        serverToRead({memberStatus(false, 10), memberStatus(true, 9), memberStatus(false, 9)}), 0);
}

TEST(ServerToRead, IsNotAServerThatIsCutOff) {
    EXPECT_EQ(serverToRead(
                  {memberStatus(false, 9, false), memberStatus(true, 9), memberStatus(false, 9)}),
              2);
    EXPECT_EQ(serverToRead({ServerStatus{.connected = false}, ServerStatus()}), 1);
}

TEST(ServerToRead, IsNoneWhileAllFollowersAreBehind) {
    EXPECT_EQ(serverToRead({memberStatus(true, 9), memberStatus(false, 8), std::nullopt}),
              std::nullopt);
}

TEST(ServerToRead, IsNoneWithoutALeader) {
    EXPECT_EQ(serverToRead({memberStatus(false, 9), memberStatus(false, 9), std::nullopt}),
              std::nullopt);
}

TEST(ServerToRead, IsNoneIfItsIndexIsUnknownButTheLeadersIsNot) {
    ServerStatus const unknown{.cluster = cluster, .leader = false};
    EXPECT_EQ(serverToRead({memberStatus(true, 9), unknown}), std::nullopt);
}

TEST(LeaderOf, IsTheConnectedLeader) {
    EXPECT_EQ(leaderOf({memberStatus(false, 9), memberStatus(true, 9)}), 1);
    EXPECT_EQ(leaderOf({memberStatus(true, 9, false), memberStatus(false, 9)}), std::nullopt);
    EXPECT_EQ(leaderOf({std::nullopt}), std::nullopt);
}

TEST(LeaderOf, IfSeveralReportToLeadIsTheOneWithTheHighestIndex) {
    EXPECT_EQ(leaderOf({memberStatus(true, 9), memberStatus(true, 11), memberStatus(false, 11)}),
              1);
}

TEST(ServerToRead, IsTheFirstConnectedRelay) {
    auto cutOff = relayStatus;
    cutOff.connected = false;
    EXPECT_EQ(serverToRead({std::nullopt, cutOff, relayStatus, relayStatus}), 2);
    EXPECT_EQ(serverToRead({cutOff}), std::nullopt);
}

TEST(AreOfOneDatabase, ServersOfOneClusterAndRelays) {
    EXPECT_TRUE(areOfOneDatabase(memberStatus(true, 9), memberStatus(false, 8)));
    EXPECT_TRUE(areOfOneDatabase(relayStatus, relayStatus));
    EXPECT_FALSE(areOfOneDatabase(relayStatus, memberStatus(true, 9)));
    EXPECT_FALSE(areOfOneDatabase(relayStatus, ServerStatus()));
    auto other = memberStatus(true, 9);
    other.cluster = sources::ovsdb::Uuid{1, 3};
    EXPECT_FALSE(areOfOneDatabase(memberStatus(true, 9), other));
    EXPECT_FALSE(areOfOneDatabase(memberStatus(true, 9), ServerStatus()));
    EXPECT_FALSE(areOfOneDatabase(ServerStatus(), ServerStatus()));
}

} // namespace vxshow::test
