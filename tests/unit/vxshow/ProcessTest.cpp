#include "tests/unit/vxshow/Process.h"

#include <csignal>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

/// Forks where there may be no more processes; root may always have some.
void forkWithoutRoom() {
    rlimit const none{0, 0};
    setrlimit(RLIMIT_NPROC, &none);
    setrlimit(RLIMIT_CORE, &none);
    if (geteuid() == 0 && setuid(65534) != 0) {
        _exit(1);
    }
    forked();
    _exit(0);
}

} // namespace

TEST(ProcessDeathTest, AForkThatFailsEndsTheTestProgram) {
    EXPECT_EXIT(forkWithoutRoom(), testing::KilledBySignal(SIGABRT),
                "cannot go on without a process of their own: Resource temporarily unavailable");
}

TEST(Process, OnceWaitedForItIsSentNoSignal) {
    Process process({"--version"});
    EXPECT_EQ(process.finish().status, 0);
    // Should this one reach every process after all, none of them minds.
    EXPECT_NONFATAL_FAILURE(process.signal(SIGURG), "no signal");
    EXPECT_NONFATAL_FAILURE(process.finish(), "waited for already");
}
