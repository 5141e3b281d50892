#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

/// Names that only the sources of a live state know: FRR, whose vtysh is a script that counts how
/// often it was asked.

namespace {

using namespace std::chrono_literals;

std::string contentOf(std::filesystem::path const & path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class LiveCompletion : public ::testing::Test {
protected:
    LiveCompletion() { source("leaf1"); }

    /// Adds a source to the fabric file. `vni` is text for the script.
    void source(std::string const & name, std::string const & vni = "10",
                std::string const & before = "") const {
        std::ofstream(fabric(), std::ios::app) << R"([[source]]
kind = "frr"
name = ")" + name + R"("
remote_shell = false
command = ["sh", "-c", '''
)" + before + R"(
for word; do
    case $word in show*) echo "host# $word";; esac
    case $word in
    "show evpn vni detail json") echo asked >> )" + asked() +
                                                      R"(
        echo '[{"vni":)" + vni + R"(,"type":"L2","vrf":"red","vtepIp":"10.0.0.1"}]';;
    esac
done
''', "vtysh"]
)";
    }

    std::string fabric() const { return folder_.file("fabric.toml"); }

    std::string asked() const { return folder_.file("asked"); }

    std::string cache() const { return folder_.file("cache"); }

    std::string file(std::string const & name) const { return folder_.file(name); }

    /// How often a source was asked.
    std::ptrdiff_t count() const {
        auto const text = contentOf(asked());
        return std::count(text.begin(), text.end(), '\n');
    }

    /// What a Tab after `--vni` or another filter gives.
    std::string tab(std::string const & filter = "--vni") const {
        auto const finished = runVxshow(
            {"complete", "zsh", "--", "--fabric", fabric(), "mac", "received", filter, ""},
            {.inChild = [this] { ::setenv("XDG_CACHE_HOME", cache().c_str(), 1); }});
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.err, "");
        return finished.out;
    }

    /// The file of that kind in the cache, "names-" or "lock-"; empty if there is none.
    std::string cached(std::string const & kind) const {
        if (!std::filesystem::exists(cache() + "/vxshow")) {
            return "";
        }
        for (auto const & entry : std::filesystem::directory_iterator(cache() + "/vxshow")) {
            if (entry.path().filename().native().starts_with(kind)) {
                return entry.path();
            }
        }
        return "";
    }

    bool isBeingRead() const {
        int const lock = ::open(cached("lock-").c_str(), O_RDONLY | O_CLOEXEC);
        bool const isLocked = lock >= 0 && ::flock(lock, LOCK_SH | LOCK_NB) != 0;
        ::close(lock);
        return isLocked;
    }

    /// Takes the place of a process that reads the sources, until the descriptor is closed.
    int holdLock() const {
        int const held = ::open(cached("lock-").c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_EQ(::flock(held, LOCK_EX | LOCK_NB), 0);
        return held;
    }

    /// Waits for a reading that a Tab has begun.
    void waitForReading() const {
        for (int tries = 0; isBeingRead(); ++tries) {
            ASSERT_LT(tries, 6000) << "the reading does not end";
            std::this_thread::sleep_for(10ms);
        }
    }

    /// Presses Tab and waits until the sources have been read.
    void readOnce() const {
        tab();
        waitForReading();
    }

    /// Makes what is in the cache older.
    void age(std::chrono::seconds seconds) const {
        for (auto const & entry : std::filesystem::directory_iterator(cache() + "/vxshow")) {
            auto const time = std::filesystem::last_write_time(entry.path());
            std::filesystem::last_write_time(entry.path(), time - seconds);
        }
    }

private:
    Folder folder_;
};

} // namespace

TEST_F(LiveCompletion, NamesThatTheSourcesKnowAreOffered) {
    readOnce();
    EXPECT_EQ(tab(), "words\n10\t\n");
    EXPECT_EQ(tab("--source"), "words\nall\t\nhsc\t\nqvx\t\nevpn\t\nleaf1\t\n");
}

TEST_F(LiveCompletion, NoSourceIsAskedAgainWhileTheNamesAreFresh) {
    auto const start = std::chrono::steady_clock::now();
    readOnce();
    for (int times = 0; times < 5; ++times) {
        tab();
        tab("--source");
    }
    waitForReading();
    if (std::chrono::steady_clock::now() - start > 9s) {
        GTEST_SKIP() << "the machine is too slow to press Tab ten times in 9 seconds";
    }
    EXPECT_EQ(count(), 1);
}

TEST_F(LiveCompletion, OlderNamesAreReadAgain) {
    readOnce();
    age(11s);
    readOnce();
    EXPECT_EQ(count(), 2);
}

TEST_F(LiveCompletion, ASourceThatFailsIsNotAskedAgainAtOnce) {
    std::filesystem::remove(fabric());
    source("dead", "10", "echo failed >> " + asked() + "; exit 1");
    auto const start = std::chrono::steady_clock::now();
    readOnce();
    auto const once = count();
    EXPECT_GT(once, 0);
    readOnce();
    if (std::chrono::steady_clock::now() - start > 9s) {
        GTEST_SKIP() << "the machine is too slow";
    }
    EXPECT_EQ(count(), once);
}

TEST_F(LiveCompletion, NamesFromBeforeAreOfferedWhileAnotherProcessReads) {
    readOnce();
    age(60s);
    auto const held = holdLock();
    EXPECT_EQ(tab(), "words\n10\t\n");
    EXPECT_EQ(count(), 1) << "two readings at the same time";
    ::close(held);
}

TEST_F(LiveCompletion, NamesThatAreTooOldAreNotOffered) {
    readOnce();
    age(601s);
    auto const held = holdLock();
    EXPECT_EQ(tab(), "words\n");
    ::close(held);
}

TEST_F(LiveCompletion, AnotherContentOfTheFabricFileIsAnotherState) {
    readOnce();
    source("leaf2", "20");
    readOnce();
    EXPECT_EQ(tab(), "words\n10\t\n20\t\n");
    EXPECT_EQ(count(), 3);
}

TEST_F(LiveCompletion, ASlowSourceDoesNotKeepTheShellWaiting) {
    std::filesystem::remove(fabric());
    auto const go = file("go");
    source("slow", "10", "while [ ! -e " + go + " ]; do sleep 0.05; done");
    // The answer comes although the source waits, and with it the end of all pipes.
    EXPECT_EQ(tab(), "words\n");
    EXPECT_EQ(tab("--source"), "words\nall\t\nhsc\t\nqvx\t\nevpn\t\nslow\t\n");
    std::ofstream(go) << "";
    waitForReading();
    EXPECT_EQ(tab(), "words\n10\t\n");
}

TEST_F(LiveCompletion, TheFilesAreOnlyForTheUser) {
    readOnce();

    struct stat found {};

    ASSERT_EQ(::stat((cache() + "/vxshow").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0700U);
    for (char const * const kind : {"names-", "lock-"}) {
        ASSERT_EQ(::stat(cached(kind).c_str(), &found), 0) << kind;
        EXPECT_EQ(found.st_mode & 0777U, 0600U) << kind;
    }
}

TEST_F(LiveCompletion, AFolderThatOthersCanReadIsNotUsed) {
    std::filesystem::create_directories(cache() + "/vxshow");
    ASSERT_EQ(::chmod((cache() + "/vxshow").c_str(), 0755), 0);
    readOnce();
    EXPECT_EQ(tab(), "words\n");
    EXPECT_EQ(count(), 0);
}

TEST_F(LiveCompletion, InvalidFilesOfNamesAreIgnored) {
    readOnce();
    auto const held = holdLock();
    auto const path = cached("names-");
    auto const valid = contentOf(path);
    auto const place = valid.find("--vni 10\n");
    ASSERT_NE(place, std::string::npos) << valid;
    std::string wrongState = valid;
    wrongState[valid.find('\n') + 1] ^= 1;
    auto const with = [&](std::string const & line) {
        return std::string(valid).insert(place, line);
    };
    for (std::string const & bad :
         {valid.substr(0, valid.size() - 1), std::string(), wrongState, with("--dest x\n"),
          with("x\n"), with("--vni \n"), with("--vni \x1b[2J\n"),
          with("--vni " + std::string(257, '1') + "\n"), with(std::string(300000, 'x') + "\n")}) {
        std::ofstream(path, std::ios::trunc) << bad;
        EXPECT_EQ(tab(), "words\n") << bad.substr(0, 300);
    }
    std::ofstream(path, std::ios::trunc) << with("--vni 7\n");
    EXPECT_EQ(tab(), "words\n7\t\n10\t\n");
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    EXPECT_EQ(tab(), "words\n");
    ::close(held);
}

TEST_F(LiveCompletion, OldFilesAreRemoved) {
    readOnce();
    auto const old = cache() + "/vxshow/names-0123";
    std::ofstream(old) << "x";
    ASSERT_EQ(::chmod(old.c_str(), 0600), 0);
    age(601s);
    readOnce();
    EXPECT_FALSE(std::filesystem::exists(old));
    EXPECT_NE(cached("names-"), "");
    EXPECT_NE(cached("lock-"), "");
}

TEST_F(LiveCompletion, WithoutAFolderForTheNamesNoSourceIsAsked) {
    auto const finished =
        runVxshow({"complete", "zsh", "--", "--fabric", fabric(), "mac", "received", "--vni", ""});
    EXPECT_EQ(finished.out, "words\n");
    EXPECT_EQ(count(), 0);
}

TEST_F(LiveCompletion, AFabricOfTheConfigurationIsRead) {
    std::filesystem::create_directories(file("config/vxshow"));
    std::ofstream(file("config/vxshow/config.toml")) << "[fabrics]\ndc1 = \"" << fabric() << "\"\n";
    auto const tabOfName = [&] {
        return runVxshow({"complete", "zsh", "--", "-F", "dc1", "mac", "received", "--vni", ""},
                         {.inChild =
                              [&] {
                                  ::setenv("XDG_CACHE_HOME", cache().c_str(), 1);
                                  ::setenv("XDG_CONFIG_HOME", file("config").c_str(), 1);
                              }})
            .out;
    };
    tabOfName();
    waitForReading();
    EXPECT_EQ(tabOfName(), "words\n10\t\n");
}
