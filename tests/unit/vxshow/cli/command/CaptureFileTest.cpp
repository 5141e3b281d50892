#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include <linux/capability.h>

using namespace std::chrono_literals;

namespace {

using Names = std::vector<std::string>;

std::string contentOf(std::string const & path) {
    std::ifstream const file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void write(std::string const & path, std::string const & text) {
    std::ofstream(path) << text;
}

mode_t modeOf(std::string const & path) {
    struct stat status {};

    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::string ownersOf(std::string const & path) {
    struct stat status {};

    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return std::to_string(status.st_uid) + ":" + std::to_string(status.st_gid);
}

std::string captured(std::string const & snapshot) {
    return answer(snapshot, {"capture", "-"});
}

/// Waits until the process has a file in `folder` open, named or unnamed.
bool opened(pid_t pid, std::string const & folder) {
    auto const deadline = std::chrono::steady_clock::now() + 30s;
    while (std::chrono::steady_clock::now() < deadline) {
        std::error_code gone; // a descriptor may be closed meanwhile
        std::filesystem::directory_iterator const all("/proc/" + std::to_string(pid) + "/fd", gone);
        for (auto const & descriptor : all) {
            if (std::filesystem::read_symlink(descriptor, gone).string().starts_with(folder)) {
                return true;
            }
        }
    }
    return false;
}

void expectOneLine(Finished const & finished, std::string const & line) {
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "vxshow: capture: " + line + "\n");
}

/// Drops the capability by which root ignores permissions.
void obeyPermissions() {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
}

} // namespace

TEST(CaptureFile, AFileIsCreatedSilentlyWithTheUmasksPermissions) {
    Folder const folder;
    TemporaryFile const state(smallSnapshot());
    auto const finished = runVxshow({"--state", state.path(), "capture", folder.file("new.json")},
                                    {.inChild = [] { umask(027); }});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out + finished.err, "");
    EXPECT_EQ(contentOf(folder.file("new.json")), captured(smallSnapshot()));
    EXPECT_EQ(modeOf(folder.file("new.json")), 0640U);
    EXPECT_EQ(folder.names(), Names{"new.json"});
}

TEST(CaptureFile, AFileIsReplacedAndKeepsItsPermissions) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, std::string(100'000, 'x'));
    chmod(path.c_str(), 0604);
    answer(smallSnapshot(), {"capture", path});
    EXPECT_EQ(contentOf(path), captured(smallSnapshot()));
    EXPECT_EQ(modeOf(path), 0604U);
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(CaptureFile, TheSnapshotThatIsReadCanBeReplaced) {
    TemporaryFile const state(exampleFabric());
    auto const expected = captured(exampleFabric());
    EXPECT_EQ(runVxshow({"--state", state.path(), "capture", state.path()}).status, 0);
    EXPECT_EQ(contentOf(state.path()), expected);
}

TEST(CaptureFile, AFullDeviceIsOneLineAndStaysADevice) {
    TemporaryFile const state(smallSnapshot());
    expectOneLine(runVxshow({"--state", state.path(), "capture", "/dev/full"}),
                  "/dev/full: No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(CaptureFile, AMissingFolderIsOneLine) {
    TemporaryFile const state(smallSnapshot());
    expectOneLine(runVxshow({"--state", state.path(), "capture", "/nonexistent/x.json"}),
                  "/nonexistent/x.json: No such file or directory");
}

TEST(CaptureFile, AFolderIsRefused) {
    Folder const folder;
    TemporaryFile const state(smallSnapshot());
    expectOneLine(runVxshow({"--state", state.path(), "capture", folder.path()}),
                  folder.path() + ": Is a directory");
    EXPECT_EQ(folder.names(), Names{});
}

TEST(CaptureFile, AFailedWriteKeepsTheOldFile) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    TemporaryFile const state(largeSnapshot(20'000));
    auto const limited = [] {
        rlimit const limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    expectOneLine(runVxshow({"--state", state.path(), "capture", path}, {.inChild = limited}),
                  path + ": File too large");
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(CaptureFile, AReadOnlyFolderKeepsTheOldFile) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    chmod(folder.path().c_str(), 0555);
    TemporaryFile const state(smallSnapshot());
    expectOneLine(
        runVxshow({"--state", state.path(), "capture", path}, {.inChild = obeyPermissions}),
        path + ": Permission denied");
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(CaptureFile, AReadOnlyFileIsKept) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    chmod(path.c_str(), 0444);
    TemporaryFile const state(smallSnapshot());
    expectOneLine(
        runVxshow({"--state", state.path(), "capture", path}, {.inChild = obeyPermissions}),
        path + ": Permission denied");
    EXPECT_EQ(contentOf(path), "old");
}

/// Only root can give a file to another user.
class CaptureFileOfAnotherUser : public testing::Test {
protected:
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "only root can give a file to another user: run as root";
        }
        write(path, "old");
        ASSERT_EQ(chown(path.c_str(), 12345, 12346), 0);
    }

    Folder const folder;
    std::string const path = folder.file("old.json");
};

TEST_F(CaptureFileOfAnotherUser, ANewFileKeepsTheOwnerAndTheGroupOfTheOldOne) {
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    answer(smallSnapshot(), {"capture", path});
    EXPECT_EQ(contentOf(path), captured(smallSnapshot()));
    EXPECT_EQ(ownersOf(path), "12345:12346");
    EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(CaptureFileOfAnotherUser, AFileWhoseOwnerCannotBeKeptIsReplacedOnlyByForce) {
    TemporaryFile const state(smallSnapshot());
    Process::Setting const withoutChown{.inChild = [] { prctl(PR_CAPBSET_DROP, CAP_CHOWN); }};
    expectOneLine(runVxshow({"--state", state.path(), "capture", path}, withoutChown),
                  path + ": the owner and the group of the file, 12345 and 12346, cannot be kept; "
                         "--force replaces it");
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
    auto const forced =
        runVxshow({"--state", state.path(), "capture", "--force", path}, withoutChown);
    EXPECT_EQ(forced.status, 0);
    EXPECT_EQ(forced.err, "");
    EXPECT_EQ(contentOf(path), captured(smallSnapshot()));
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(CaptureFile, AFileWithSeveralNamesIsReplacedOnlyByForce) {
    Folder const folder;
    auto const path = folder.file("old.json");
    auto const other = folder.file("other.json");
    write(path, "old");
    std::filesystem::create_hard_link(path, other);
    TemporaryFile const state(smallSnapshot());
    expectOneLine(runVxshow({"--state", state.path(), "capture", path}),
                  path + ": the file has 2 names (hard links), and only this one would get the new "
                         "content; --force replaces it");
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(runVxshow({"--state", state.path(), "capture", path, "--force"}).status, 0);
    EXPECT_EQ(contentOf(path), captured(smallSnapshot()));
    EXPECT_EQ(contentOf(other), "old");
}

TEST(CaptureFile, AnUnreadableStateKeepsTheOldFile) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    EXPECT_EQ(failure("{", {"capture", path}).find("capture"), std::string::npos);
    EXPECT_EQ(contentOf(path), "old");
}

TEST(CaptureFile, AnInterruptKeepsTheOldFile) {
    Folder const folder;
    TemporaryFile const state(largeSnapshot(1'000'000));
    auto const path = folder.file("old.json");
    write(path, "old");
    Process process({"--state", state.path(), "capture", path});
    ASSERT_TRUE(opened(process.pid(), folder.path()));
    process.signal(SIGINT);
    auto const finished = process.finish();
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(CaptureFile, AKilledCaptureLeavesNothingBehind) {
    Folder const folder;
    TemporaryFile const state(largeSnapshot(1'000'000));
    Process process({"--state", state.path(), "capture", folder.file("new.json")});
    ASSERT_TRUE(opened(process.pid(), folder.path()));
    process.signal(SIGKILL);
    EXPECT_EQ(process.finish().signal, SIGKILL);
    EXPECT_EQ(folder.names(), Names{});
}

TEST(CaptureFile, AnInterruptWhileWaitingForAPipesReaderIsStatus130) {
    Folder const folder;
    auto const pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    TemporaryFile const state(smallSnapshot());
    Process process({"--state", state.path(), "capture", pipe});
    std::this_thread::sleep_for(500ms);
    process.signal(SIGINT);
    EXPECT_EQ(process.finish().status, 130);
}
