#include "vxshow/sources/fabric/AskAll.h"

#include "vxshow/sources/Access.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/frr/VtyshAccess.h"

#include <filesystem>
#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <csignal>
#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vxshow::test {

using namespace sources;
using namespace sources::fabric;

namespace {

std::shared_ptr<Access const> accessThrough(std::vector<std::string> words) {
    return std::make_shared<sources::frr::VtyshAccess>(
        sources::frr::VtyshCommand{.words = std::move(words)});
}

/// A source whose client is a script, with the arguments of a vtysh.
Source scripted(std::string const & name, std::string const & script) {
    Source source;
    source.name = name;
    source.access = accessThrough({"sh", "-c", script});
    source.timeLimit = std::chrono::milliseconds(60'000);
    return source;
}

Source failing(unsigned number, std::string const & before = "") {
    auto const text = std::to_string(number);
    return scripted(text, before + "echo 'failed as number " + text + "' >&2; exit 1");
}

std::vector<Source> failing(unsigned first, unsigned last, std::string const & before = "") {
    std::vector<Source> sources;
    for (unsigned number = first; number <= last; ++number) {
        sources.push_back(failing(number, before));
    }
    return sources;
}

std::string failureOf(std::vector<Source> const & sources) {
    return askAll(sources, {}).front().failure;
}

} // namespace

TEST(AskAll, OutcomesAreInTheOrderOfTheSourcesHoweverManyThereAre) {
    constexpr unsigned count = 3 * maxParallelReads + 1;
    auto const outcomes = askAll(failing(1, count), {});
    ASSERT_EQ(outcomes.size(), count);
    for (unsigned number = 1; number <= count; ++number) {
        auto const & outcome = outcomes[number - 1];
        EXPECT_FALSE(outcome.answer);
        EXPECT_NE(outcome.failure.find("failed as number " + std::to_string(number)),
                  std::string::npos)
            << outcome.failure;
    }
}

TEST(AskAll, ASourceThatFailsDoesNotAffectTheOthers) {
    // A vtysh without VNIs: before each answer, a line that ends in the command.
    auto const good = scripted(
        "good", "for word; do case $word in show*) echo \"host# $word\"; echo '[]';; esac; done");
    auto const outcomes = askAll({failing(1), good, failing(2)}, {});
    ASSERT_EQ(outcomes.size(), 3U);
    EXPECT_FALSE(outcomes[0].answer);
    EXPECT_TRUE(outcomes[1].answer) << outcomes[1].failure;
    EXPECT_FALSE(outcomes[2].answer);
}

TEST(AskAll, AMissingProgramIsTheReason) {
    Source source = failing(1);
    source.access = accessThrough({"/nowhere/vtysh"});
    EXPECT_EQ(failureOf({source}), "no such program: /nowhere/vtysh");
}

TEST(AskAll, EachSourceHasItsOwnTimeLimit) {
    auto slow = scripted("slow", "exec sleep 60");
    slow.timeLimit = std::chrono::milliseconds(200);
    auto const outcomes = askAll({slow, failing(1)}, {});
    EXPECT_EQ(outcomes[0].failure,
              "time limit: no answer within 0.2 s; time_limit in the fabric file allows more");
    EXPECT_NE(outcomes[1].failure.find("failed as number 1"), std::string::npos);
}

TEST(AskAll, SourcesThatAnswerDoNotWaitForThoseThatHang) {
    std::string folder = testing::TempDir() + "hang.XXXXXX";
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    // Those that hang come first, fill every place several times, and go on only after the last
    // source has been asked.
    std::vector<Source> sources;
    for (unsigned number = 0; number < 3 * maxParallelReads; ++number) {
        sources.push_back(scripted(std::to_string(number), "until [ -e " + folder +
                                                               "/end ]; do sleep 0.1; done; "
                                                               "exit 1"));
        sources.back().timeLimit = std::chrono::seconds(20);
    }
    sources.push_back(scripted("last", "touch " + folder + "/end; exit 1"));
    for (auto const & outcome : askAll(sources, {})) {
        EXPECT_EQ(outcome.failure.find("time limit"), std::string::npos) << outcome.failure;
    }
    std::filesystem::remove_all(folder);
}

namespace {

/// Does not answer until it is released, and counts how many are asked at the same time.
class BlockingAccess final : public Access {
public:
    Answer ask(Source const & source, state::Selection const &, Deadline const &) const override {
        std::unique_lock lock(mutex_);
        most_ = std::max(most_, ++asked_);
        released_.wait(lock, [&] { return isReleased_; });
        --asked_;
        throw Failure(source.name + " is released");
    }

    std::size_t most() const {
        std::lock_guard const lock(mutex_);
        return most_;
    }

    void release() {
        std::lock_guard const lock(mutex_);
        isReleased_ = true;
        released_.notify_all();
    }

private:
    mutable std::mutex mutex_;
    mutable std::condition_variable released_;
    mutable std::size_t asked_ = 0;
    mutable std::size_t most_ = 0;
    bool isReleased_ = false;
};

} // namespace

// Each update of the progress is an opportunity to ask one more.
TEST(AskAll, AtMost128SourcesThatHangAreReadAtTheSameTime) {
    rlimit files{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &files), 0);
    ASSERT_GE(files.rlim_cur, 1024U) << "with fewer descriptors fewer sources are read";
    auto const access = std::make_shared<BlockingAccess>();
    std::vector<Source> sources(160);
    for (auto & source : sources) {
        source.name = "leaf" + std::to_string(&source - sources.data());
        source.access = access;
        source.timeLimit = std::chrono::hours(1);
    }
    unsigned updates = 0;
    unsigned updatesAtMost = 0;
    auto const outcomes = askAll(sources, {}, [&](state::Progress const &) {
        updatesAtMost += access->most() >= 128 ? 1 : 0;
        if (updatesAtMost == 20 || ++updates == 1000) {
            access->release();
        }
    });
    EXPECT_EQ(access->most(), 128U);
    for (std::size_t index = 0; index < sources.size(); ++index) {
        EXPECT_EQ(outcomes[index].failure, sources[index].name + " is released");
    }
}

TEST(AskAll, ProgressIsReported) {
    state::Progress last;
    // The source ends once the progress was reported.
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    auto const source = scripted("waiting", "read line < /proc/" + std::to_string(getpid()) +
                                                "/fd/" + std::to_string(ends[0]) + "; exit 1");
    bool reported = false;
    askAll({source}, {}, [&](state::Progress const & progress) {
        last = progress;
        if (!std::exchange(reported, true)) {
            EXPECT_EQ(write(ends[1], "\n", 1), 1);
        }
    });
    EXPECT_TRUE(reported);
    EXPECT_EQ(last.sources, 1U);
    EXPECT_EQ(last.done, 0U);
    close(ends[0]);
    close(ends[1]);
}

TEST(AskAll, WithoutThreadsTheSourcesAreStillRead) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become a user without threads: run as root";
    }
    auto const withoutThreads = [] {
        constexpr uid_t unusedUser = 60001;
        rlimit const one{1, 1};
        if (setrlimit(RLIMIT_NPROC, &one) != 0 || setuid(unusedUser) != 0) {
            _exit(2);
        }
        // A program is a process, too, and so cannot be started.
        auto const outcomes = askAll(failing(1, 2), {});
        bool const bothFailed =
            outcomes.size() == 2 && !outcomes[0].failure.empty() && !outcomes[1].failure.empty();
        _exit(bothFailed ? 0 : 1);
    };
    EXPECT_EXIT(withoutThreads(), testing::ExitedWithCode(0), "");
}

TEST(AskAll, WithFewDescriptorsFewerSourcesAreReadInParallel) {
    auto const withFew = [] {
        rlimit const few{48, 48};
        if (setrlimit(RLIMIT_NOFILE, &few) != 0) {
            _exit(2);
        }
        for (auto const & outcome : askAll(failing(1, 2 * maxParallelReads, "sleep 0.1; "), {})) {
            if (outcome.failure.find("failed as number") == std::string::npos) {
                std::cerr << outcome.failure;
                _exit(1);
            }
        }
        _exit(0);
    };
    EXPECT_EXIT(withFew(), testing::ExitedWithCode(0), "");
}

TEST(AskAll, ASourceThatFailedIsNotMounted) {
    auto const sources = failing(1, 1);
    auto const mount = mountSources(sources, askAll(sources, {}), {});
    EXPECT_FALSE(mount.received.switches);
    EXPECT_FALSE(mount.advertised.vnis);
}

namespace {

/// Answers with one MAC address of a switch of its own, and keeps the counters it is given.
class CountingAccess final : public Access {
public:
    explicit CountingAccess(state::Counters kept) : kept_(kept) {}

    Answer ask(Source const & source, state::Selection const &, Deadline const &) const override {
        Answer answer;
        answer.facts.local[source.name].macs.push_back(
            {Vxlan::Vni(10), Nolt::EthAddr::ofValue(0x020000000001ULL), Nolt::IpAddr(0x0A000001)});
        answer.facts.settle();
        return answer;
    }

    state::Counters counters() const noexcept override { return kept_; }

private:
    state::Counters kept_;
};

Source counting(std::string const & name, state::Counters kept, Role role = Role::switches) {
    return {.name = name, .role = role, .access = std::make_shared<CountingAccess>(kept)};
}

} // namespace

TEST(AskAll, CountersAreKeptWhereAllSourcesKeepThem) {
    constexpr state::Counters noMoves{.moves = false};
    constexpr state::Counters noChanges{.changes = false};
    std::vector<Source> const sources{counting("leaf1", {}), counting("leaf2", noMoves),
                                      counting("hsc1", noMoves, Role::hsc),
                                      counting("hsc2", noChanges, Role::hsc)};
    auto const kept = mountSources(sources, askAll(sources, {}), {}).counters;
    EXPECT_EQ(kept.receivedFrom("leaf1"), state::Counters());
    EXPECT_EQ(kept.receivedFrom("leaf2"), noMoves);
    constexpr state::Counters neither{.moves = false, .changes = false};
    EXPECT_EQ(kept.receivedFrom(state::hscName), neither);
    EXPECT_EQ(kept.advertised, neither);
}

} // namespace vxshow::test
