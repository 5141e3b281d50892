#include "Vex/RefCount.h"

#include "Vex/Ptr.h"
#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

/// Restores the process-wide switch.
class ThreadSafe {
public:
    ThreadSafe() { Vex::threadSafePtrIs(true); }

    ~ThreadSafe() { Vex::threadSafePtrIs(false); }

    ThreadSafe(ThreadSafe const &) = delete;
    ThreadSafe & operator=(ThreadSafe const &) = delete;
};

} // namespace

TEST(RefCount, ReportsWhetherTheLastReferenceWasDropped) {
    Vex::RefCount const count;
    count.up();
    count.up();
    EXPECT_FALSE(count.down());
    EXPECT_TRUE(count.down());
    EXPECT_EQ(count.value(), 0U);
}

TEST(RefCount, IsNotThreadSafeByDefault) {
    EXPECT_FALSE(Vex::threadSafePtr());
}

TEST(RefCount, LosesNoCountBetweenThreadsIfThreadSafe) {
    ThreadSafe const on;
    constexpr int threads = 4;
    constexpr int rounds = 50'000;
    auto const shared = Vex::makePtr<Counted>(1);
    std::vector<std::thread> workers;
    for (int i = 0; i < threads; ++i) {
        workers.emplace_back([&] {
            std::vector<Vex::Ptr<Counted>> held;
            for (int round = 0; round < rounds; ++round) {
                held.push_back(shared);
                if (held.size() == 10) {
                    held.clear();
                }
            }
        });
    }
    for (auto & worker : workers) {
        worker.join();
    }
    EXPECT_EQ(shared->references(), 1U);
}
