#include "vxshow/terminal/OutOfMemory.h"

#include "tests/unit/vxshow/Folder.h"
#include "vxshow/system/AtomicFile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vxshow::test {

namespace {

/// Ends the process as the first allocation that fails does.
void runOutOfMemory() {
    std::get_new_handler()();
}

} // namespace

TEST(OutOfMemoryHandler, LeavesNoTemporaryFile) {
    Folder const folder;
    EXPECT_EXIT(
        {
            terminal::exitOnOutOfMemory();
            system::AtomicFile const file(folder.file("new"), system::AtomicFile::Temporary::named);
            if (folder.names().size() == 1) {
                runOutOfMemory();
            }
            ::_exit(2);
        },
        testing::ExitedWithCode(1), "^vxshow: out of memory\n$");
    EXPECT_EQ(folder.names(), std::vector<std::string>{});
}

TEST(OutOfMemoryHandler, SeveralThreadsPrintOneLine) {
    EXPECT_EXIT(
        {
            terminal::exitOnOutOfMemory();
            constexpr int count = 16;
            std::atomic<int> waiting{0};
            std::vector<std::jthread> threads;
            for (int number = 0; number < count; ++number) {
                threads.emplace_back([&waiting] {
                    for (++waiting; waiting < count;) {
                        std::this_thread::yield();
                    }
                    runOutOfMemory();
                });
            }
        },
        testing::ExitedWithCode(1), "^vxshow: out of memory\n$");
}

} // namespace vxshow::test
