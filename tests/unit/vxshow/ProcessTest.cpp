#include "tests/unit/vxshow/Process.h"

#include <csignal>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

/// Forks with the limit on processes reached; the limit does not apply to root.
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

TEST(Process, IsSentNoSignalOnceItWasWaitedFor) {
    Process process({"--version"});
    EXPECT_EQ(process.finish().status, 0);
    // Ignored by default, so it does no harm even if it should reach every process.
    EXPECT_NONFATAL_FAILURE(process.signal(SIGURG), "no signal");
    EXPECT_NONFATAL_FAILURE(process.finish(), "waited for already");
}
