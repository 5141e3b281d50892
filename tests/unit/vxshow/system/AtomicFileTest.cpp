#include "vxshow/system/AtomicFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace vxshow::test {

using namespace system;

namespace {

using Names = std::vector<std::string>;

/// Runs with both kinds of temporary file, in a folder that is empty at first.
class AtomicFiles : public testing::TestWithParam<AtomicFile::Temporary> {
protected:
    AtomicFiles() {
        folder_ = std::filesystem::temp_directory_path() / "atomic-file-XXXXXX";
        EXPECT_TRUE(mkdtemp(folder_.data()));
    }

    ~AtomicFiles() override { std::filesystem::remove_all(folder_); }

    std::string path(std::string const & name) const { return folder_ + "/" + name; }

    Names names() const {
        Names names;
        for (auto const & entry : std::filesystem::directory_iterator(folder_)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    void put(std::string const & name, std::string const & text) const {
        std::ofstream(path(name)) << text;
    }

    std::string content(std::string const & name) const {
        std::ifstream const file(path(name));
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    std::string folder_;
};

void append(AtomicFile const & file, std::string const & text) {
    EXPECT_EQ(::write(file.descriptor(), text.data(), text.size()),
              static_cast<ssize_t>(text.size()));
}

TEST_P(AtomicFiles, ACommittedFileIsInPlace) {
    {
        AtomicFile file(path("new"), GetParam());
        append(file, "text");
        EXPECT_FALSE(std::filesystem::exists(path("new")));
        file.commit();
        EXPECT_EQ(content("new"), "text");
    }
    EXPECT_EQ(content("new"), "text");
    EXPECT_EQ(names(), Names{"new"});
}

TEST_P(AtomicFiles, AnUncommittedFileLeavesNothing) {
    {
        AtomicFile const file(path("new"), GetParam());
        append(file, "text");
    }
    EXPECT_EQ(names(), Names{});
}

TEST_P(AtomicFiles, AnUncommittedFileIsALeftover) {
    AtomicFile const file(path("new"), GetParam());
    append(file, "text");
    removeLeftovers();
    EXPECT_EQ(names(), Names{});
}

TEST_P(AtomicFiles, ACommittedFileIsNoLeftover) {
    AtomicFile file(path("new"), GetParam());
    append(file, "text");
    file.commit();
    removeLeftovers();
    EXPECT_EQ(names(), Names{"new"});
}

TEST_P(AtomicFiles, TheOldFileIsWholeUntilTheCommit) {
    put("old", "old");
    AtomicFile file(path("old"), GetParam());
    append(file, "text");
    EXPECT_EQ(content("old"), "old");
    file.commit();
    EXPECT_EQ(content("old"), "text");
}

TEST_P(AtomicFiles, AReaderOfTheOldFileIsNotDisturbed) {
    put("old", "old");
    std::ifstream reader(path("old"));
    AtomicFile file(path("old"), GetParam());
    append(file, "text");
    file.commit();
    std::string line;
    std::getline(reader, line);
    EXPECT_EQ(line, "old");
}

TEST_P(AtomicFiles, TheOldFilesPermissionsAreKept) {
    put("old", "old");
    ASSERT_EQ(chmod(path("old").c_str(), 0606), 0);
    AtomicFile file(path("old"), GetParam());
    file.commit();
    EXPECT_EQ(std::filesystem::status(path("old")).permissions(),
              static_cast<std::filesystem::perms>(0606));
}

TEST_P(AtomicFiles, ANewFilesPermissionsFollowTheUmask) {
    auto const mask = umask(026);
    AtomicFile file(path("new"), GetParam());
    umask(mask);
    file.commit();
    EXPECT_EQ(std::filesystem::status(path("new")).permissions(),
              static_cast<std::filesystem::perms>(0640));
}

TEST_P(AtomicFiles, ASymbolicLinkStaysOne) {
    put("behind", "old");
    std::filesystem::create_symlink("behind", path("link"));
    AtomicFile file(path("link"), GetParam());
    append(file, "text");
    file.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(content("behind"), "text");
}

TEST_P(AtomicFiles, ADanglingSymbolicLinkStaysOne) {
    std::filesystem::create_directory(path("folder"));
    std::filesystem::create_symlink("folder/second", path("first"));
    std::filesystem::create_symlink("behind", path("folder/second"));
    AtomicFile file(path("first"), GetParam());
    append(file, "text");
    file.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(path("first")));
    EXPECT_TRUE(std::filesystem::is_symlink(path("folder/second")));
    EXPECT_EQ(content("folder/behind"), "text");
}

TEST_P(AtomicFiles, CircularLinksAreAnError) {
    std::filesystem::create_symlink("b", path("a"));
    std::filesystem::create_symlink("a", path("b"));
    EXPECT_THROW(AtomicFile(path("a"), GetParam()), std::system_error);
    EXPECT_TRUE(std::filesystem::is_symlink(path("a")));
}

TEST_P(AtomicFiles, AFolderCreatedMeanwhileUnderTheNameIsAnErrorAndLeavesNothing) {
    {
        AtomicFile file(path("new"), GetParam());
        std::filesystem::create_directory(path("new"));
        EXPECT_THROW(file.commit(), std::system_error);
    }
    EXPECT_EQ(names(), Names{"new"});
    EXPECT_TRUE(std::filesystem::is_directory(path("new")));
}

TEST_P(AtomicFiles, ANameOfTheGreatestLengthIsAccepted) {
    std::string const longest(255, 'n');
    AtomicFile file(path(longest), GetParam());
    file.commit();
    EXPECT_EQ(names(), Names{longest});
}

TEST_P(AtomicFiles, ANameWithoutAFolderIsInTheCurrentOne) {
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
    {
        AtomicFile file("new", GetParam());
        file.commit();
    }
    std::filesystem::current_path(before);
    EXPECT_EQ(names(), Names{"new"});
}

TEST_P(AtomicFiles, AMissingFolderIsAnError) {
    try {
        AtomicFile const file(path("none/new"), GetParam());
        FAIL() << "opened";
    } catch (std::system_error const & error) {
        EXPECT_EQ(error.code().value(), ENOENT);
    }
}

TEST_P(AtomicFiles, ADeviceIsWrittenToDirectly) {
    AtomicFile file("/dev/null", GetParam());
    append(file, "text");
    file.commit();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_P(AtomicFiles, SignalsAreDeliveredOnceTheFileHasItsName) {
    AtomicFile file(path("new"), GetParam());
    file.commit();
    sigset_t held;
    pthread_sigmask(SIG_BLOCK, nullptr, &held);
    EXPECT_FALSE(sigismember(&held, SIGTERM));
    EXPECT_FALSE(sigismember(&held, SIGALRM));
}

INSTANTIATE_TEST_SUITE_P(Both, AtomicFiles,
                         testing::Values(AtomicFile::Temporary::unnamed,
                                         AtomicFile::Temporary::named),
                         [](auto const & tested) {
                             return tested.param == AtomicFile::Temporary::named ? "Named"
                                                                                 : "Unnamed";
                         });

TEST(BlockedSignals, AreDeliveredAtItsEnd) {
    static volatile std::sig_atomic_t come = 0;
    for (int const signal : {SIGALRM, SIGHUP, SIGQUIT, SIGTERM}) {
        come = 0;
        auto const before = std::signal(signal, [](int) { come = 1; });
        {
            BlockedSignals const held;
            std::raise(signal);
            EXPECT_EQ(come, 0);
        }
        EXPECT_EQ(come, 1) << signal;
        std::signal(signal, before);
    }
}

} // namespace

} // namespace vxshow::test
