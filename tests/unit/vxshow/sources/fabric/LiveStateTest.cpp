#include "vxshow/sources/fabric/LiveState.h"

#include "tests/unit/vxshow/state/snapshot/Snapshots.h"
#include "vxshow/sources/Access.h"
#include "vxshow/sources/Failure.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>

namespace vxshow::test {

using namespace sources;
using namespace sources::fabric;
using state::Keep;

/// Answers with one switch, or fails, as the test sets it.
class SwitchableAccess final : public Access {
public:
    Answer ask(Source const & source, state::Selection const &, Deadline const &) const override {
        if (fails) {
            throw Failure("unreachable: " + source.name);
        }
        Answer answer;
        auto & macs = answer.facts.local[source.name].macs;
        for (unsigned number = 0; number < macCount; ++number) {
            macs.push_back({Vxlan::Vni(10), Nolt::EthAddr::ofValue(0x020000000000ULL + number),
                            Nolt::IpAddr(0x0A000001)});
        }
        answer.facts.settle();
        if (leavesOut) {
            answer.findings.leftOut.add(Subject::localMacs, "a row");
        }
        return answer;
    }

    std::atomic<bool> fails = false;
    std::atomic<bool> leavesOut = false;
    std::atomic<unsigned> macCount = 0;
};

/// Two sources, leaf1 and leaf2.
class LiveStateTest : public testing::Test {
protected:
    LiveState liveState(Keep keep, bool allOrNothing = false) const {
        return {{{{.name = "leaf1", .access = leaf1}, {.name = "leaf2", .access = leaf2}}},
                allOrNothing,
                keep};
    }

    static bool shows(state::Reading const & reading, std::string_view name) {
        return switchOf(reading.mount, name) != nullptr;
    }

    static std::string errorOf(LiveState & state) {
        try {
            state.read({});
        } catch (state::StateError const & error) {
            return error.what();
        }
        return {};
    }

    /// Many more MAC addresses than are mounted within a millisecond, on any machine.
    static constexpr unsigned tooManyMacs = 500'000;

    LiveState hastyState(Keep keep) const {
        return {{{{.name = "leaf1", .access = leaf1, .timeLimit = std::chrono::milliseconds(1)},
                  {.name = "leaf2", .access = leaf2, .timeLimit = std::chrono::milliseconds(1)}}},
                false,
                keep};
    }

    std::shared_ptr<SwitchableAccess> leaf1 = std::make_shared<SwitchableAccess>();
    std::shared_ptr<SwitchableAccess> leaf2 = std::make_shared<SwitchableAccess>();
};

TEST_F(LiveStateTest, IsCompleteIfEverySourceAnswers) {
    auto const reading = liveState(Keep::nothing).read({});
    EXPECT_TRUE(reading.complete);
    EXPECT_TRUE(reading.remarks.empty());
    EXPECT_TRUE(shows(reading, "leaf1"));
    EXPECT_TRUE(shows(reading, "leaf2"));
}

TEST_F(LiveStateTest, ASourceThatFailsIsMissingAndRemarkedOn) {
    leaf2->fails = true;
    auto const reading = liveState(Keep::nothing).read({});
    EXPECT_FALSE(reading.complete);
    EXPECT_EQ(reading.remarks, std::vector<std::string>{"leaf2: unreachable: leaf2"});
    EXPECT_TRUE(shows(reading, "leaf1"));
    EXPECT_FALSE(shows(reading, "leaf2"));
}

TEST_F(LiveStateTest, ASourceThatFailsIsShownAsItLastAnswered) {
    auto state = liveState(Keep::lastGood);
    state.read({});
    leaf2->fails = true;
    auto const reading = state.read({});
    EXPECT_FALSE(reading.complete);
    ASSERT_EQ(reading.remarks.size(), 1U);
    EXPECT_TRUE(reading.remarks[0].starts_with("STALE since ")) << reading.remarks[0];
    EXPECT_TRUE(reading.remarks[0].ends_with(": leaf2: unreachable: leaf2")) << reading.remarks[0];
    EXPECT_TRUE(shows(reading, "leaf1"));
    EXPECT_TRUE(shows(reading, "leaf2"));
}

TEST_F(LiveStateTest, WithoutKeepingASourceThatFailsIsNotShown) {
    auto state = liveState(Keep::nothing);
    state.read({});
    leaf2->fails = true;
    EXPECT_FALSE(shows(state.read({}), "leaf2"));
}

TEST_F(LiveStateTest, IsShownAsALastAnswerOnlyWhileTheSourceFails) {
    auto state = liveState(Keep::lastGood);
    state.read({});
    leaf2->fails = true;
    state.read({});
    leaf2->fails = false;
    auto const reading = state.read({});
    EXPECT_TRUE(reading.complete);
    EXPECT_TRUE(reading.remarks.empty());
}

TEST_F(LiveStateTest, WarningsOfALastAnswerAreRepeated) {
    auto state = liveState(Keep::lastGood);
    leaf2->leavesOut = true;
    EXPECT_EQ(state.read({}).remarks, std::vector<std::string>{"leaf2: 1 entry left out: a row"});
    leaf2->fails = true;
    auto const remarks = state.read({}).remarks;
    ASSERT_EQ(remarks.size(), 2U);
    EXPECT_EQ(remarks[1], "leaf2: 1 entry left out: a row");
}

TEST_F(LiveStateTest, WithAllOrNothingOneFailureLeavesNothingToShow) {
    auto state = liveState(Keep::lastGood, true);
    state.read({});
    leaf1->fails = true;
    EXPECT_EQ(errorOf(state), "leaf1: unreachable: leaf1");
}

TEST_F(LiveStateTest, WithoutAnyAnswerThereIsALineForEachSource) {
    leaf1->fails = true;
    leaf2->fails = true;
    auto state = liveState(Keep::lastGood);
    EXPECT_EQ(errorOf(state), "leaf1: unreachable: leaf1\nleaf2: unreachable: leaf2");
}

TEST_F(LiveStateTest, PuttingTheAnswersTogetherHasATimeLimitToo) {
    leaf2->macCount = tooManyMacs;
    auto state = hastyState(Keep::nothing);
    EXPECT_EQ(
        errorOf(state),
        "time limit: the answers were not put together within 0.001 s; the largest is that of "
        "leaf2: 500000 entries; time_limit in the fabric file allows more, and --vni asks for "
        "less");
}

TEST_F(LiveStateTest, TheTimeOfThatIsTheLongestOfTheSourcesShown) {
    leaf2->macCount = 5000;
    LiveState state(
        {{{.name = "leaf1", .access = leaf1, .timeLimit = std::chrono::hours(1)},
          {.name = "leaf2", .access = leaf2, .timeLimit = std::chrono::milliseconds(1)}}},
        false, Keep::nothing);
    EXPECT_TRUE(shows(state.read({}), "leaf2"));
}

TEST_F(LiveStateTest, TheOriginSaysWhatBecameOfEachSource) {
    auto state = liveState(Keep::lastGood);
    leaf1->macCount = 3;
    leaf2->fails = true;
    auto const origin = state.read({}).mount.origin;
    ASSERT_TRUE(origin);
    ASSERT_EQ(origin->sources.size(), 2U);
    EXPECT_EQ(origin->sources[0].name, "leaf1");
    EXPECT_EQ(origin->sources[0].failure, "");
    EXPECT_EQ(origin->sources[0].counts.localMacs, 3U);
    EXPECT_LE(*origin->sources[0].read, origin->made);
    EXPECT_FALSE(origin->sources[1].read);
    EXPECT_EQ(origin->sources[1].failure, "unreachable: leaf2");
}

TEST_F(LiveStateTest, TheOriginOfALastAnswerHasItsTime) {
    auto state = liveState(Keep::lastGood);
    auto const read = state.read({}).mount.origin->sources[1].read;
    leaf2->fails = true;
    auto const origin = state.read({}).mount.origin;
    EXPECT_EQ(origin->sources[1].read, read);
    EXPECT_EQ(origin->sources[1].failure, "unreachable: leaf2");
}

TEST_F(LiveStateTest, ANameThatIsNotUtf8IsEscapedInTheOrigin) {
    LiveState state({{{.name = "a\xff", .access = leaf1}}}, false, Keep::nothing);
    EXPECT_EQ(state.read({}).mount.origin->sources[0].name, "a\\xff");
}

} // namespace vxshow::test
