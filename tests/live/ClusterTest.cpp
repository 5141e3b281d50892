#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

namespace {

/// Three servers, some of which fail. Their data stays the same, so every listing either shows it
/// or reports a failure.
class Cluster : public testing::Test {
protected:
    void SetUp() override {
        VXSHOW_NEEDS_LAB(Lab::database);
        cluster_ = std::make_unique<OvsdbCluster>();
        cluster_->waitForLeader();
        outputOf({labProgram("ovsdb-lab"), "small", cluster_->remotes()});
        expected_ = shown(question());
        ASSERT_EQ(rowsOf(expected_).size(), 14U);
    }

    Words question() const { return {"--ovsdb", cluster_->remotes(), "mac", "received"}; }

    /// Asks once; returns whether there was an answer.
    bool answered() const {
        auto const finished = ask(question());
        if (finished.status == 0) {
            EXPECT_EQ(finished.out, expected_);
            EXPECT_EQ(finished.err, "");
            return true;
        }
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(failuresOf(finished).size(), 1U);
        return false;
    }

    std::unique_ptr<OvsdbCluster> cluster_;
    std::string expected_;
};

} // namespace

TEST_F(Cluster, EveryAnswerIsCorrectWhileTheLeaderIsKilled) {
    for (int round = 0; round < 2; ++round) {
        auto const killed = cluster_->signal("leader", "KILL");
        for (int asked = 0; asked < 10; ++asked) {
            answered();
        }
        waitUntil("the others to answer", [this] { return answered(); });
        cluster_->start(killed);
        cluster_->waitForLeader();
        waitUntil("all three to answer", [this] { return answered(); });
    }
}

TEST_F(Cluster, TheLastOfThreeAnswersCorrectlyOrNotAtAll) {
    auto const first = cluster_->signal("follower", "KILL");
    auto const second = cluster_->signal("follower", "KILL");
    for (int asked = 0; asked < 10; ++asked) {
        answered();
    }
    cluster_->start(first);
    cluster_->start(second);
    cluster_->waitForLeader();
    waitUntil("all three to answer", [this] { return answered(); });
}

TEST_F(Cluster, AFollowerThatHangsCostsNoAnswer) {
    auto const stopped = cluster_->signal("follower", "STOP");
    for (int asked = 0; asked < 3; ++asked) {
        EXPECT_TRUE(answered());
    }
    cluster_->signal(stopped, "CONT");
}

TEST_F(Cluster, RelaysAnswerLikeTheClusterItself) {
    OvsdbRelay const first(cluster_->remotes());
    OvsdbRelay const second(cluster_->remotes());
    auto const remotes = first.remote() + "," + second.remote();
    EXPECT_EQ(shown({"--ovsdb", remotes, "mac", "received"}), expected_);
    auto const gone = "unix:/nowhere/sock," + second.remote();
    EXPECT_EQ(shown({"--ovsdb", gone, "mac", "received"}), expected_);
}

TEST_F(Cluster, WithoutAnyServerTheSourceFails) {
    for (auto const * const node : {"n1", "n2", "n3"}) {
        cluster_->signal(node, "KILL");
    }
    expectNothingShown(ask(question()), cluster_->remotes(), "unreachable");
}

TEST_F(Cluster, EveryListingIsThatOfASingleServer) {
    OvsdbLab const single;
    single.fillSmall();
    for (Words const & listing : listings()) {
        EXPECT_EQ(shown(Words{"--ovsdb", cluster_->remotes()} + listing),
                  shown(Words{"--ovsdb", single.remote()} + listing));
    }
}
