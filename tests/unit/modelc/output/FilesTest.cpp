#include "modelc/output/Files.h"

#include <gtest/gtest.h>

#include <fstream>

namespace modelc {

namespace fs = std::filesystem;

namespace {

class Files : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::path(::testing::TempDir()) /
                  ("modelc-files-" +
                   std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }

    void TearDown() override { fs::remove_all(folder_); }

    std::size_t entries() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    static std::string errorOf(auto action) {
        try {
            action();
        } catch (FileError const & error) {
            return error.what();
        }
        return "no error";
    }

    fs::path folder_;
};

} // namespace

TEST_F(Files, ReadBackAsWritten) {
    std::string const text("a\nb\0c\r\n", 7);
    writeFiles({{folder_ / "sub" / "x", text}, {folder_ / "y", ""}});
    EXPECT_EQ(readFile(folder_ / "sub" / "x"), text);
    EXPECT_EQ(readFile(folder_ / "y"), "");
    EXPECT_EQ(entries(), 2U);
}

TEST_F(Files, WithTheSameTextAreNotRewritten) {
    fs::path const file = folder_ / "x";
    writeFiles({{file, "same"}});
    auto const past = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(file, past);
    writeFiles({{file, "same"}});
    EXPECT_EQ(fs::last_write_time(file), past);
    writeFiles({{file, "new"}});
    EXPECT_GT(fs::last_write_time(file), past);
    EXPECT_EQ(readFile(file), "new");
}

TEST_F(Files, AreAllWrittenOrNone) {
    writeFiles({{folder_ / "a", "old"}, {folder_ / "blocked", "a file, not a folder"}});
    auto const error = errorOf([&] {
        writeFiles({{folder_ / "a", "new"}, {folder_ / "blocked" / "b", "new"}});
    });
    EXPECT_EQ(error, "cannot create the directory " + (folder_ / "blocked").string() +
                         ": Not a directory");
    EXPECT_EQ(readFile(folder_ / "a"), "old");
    EXPECT_EQ(entries(), 2U);
}

TEST_F(Files, LeaveNoDraftsIfOneCannotBeWritten) {
    fs::create_directories(folder_ / "x" / "inside");
    auto const error = errorOf([&] {
        writeFiles({{folder_ / "w", "text"}, {folder_ / "x", "text"}});
    });
    EXPECT_EQ(error, "cannot write " + (folder_ / "x").string() + ": Is a directory");
    EXPECT_EQ(entries(), 1U);
}

TEST_F(Files, ThatCannotBeReadAreReported) {
    EXPECT_EQ(errorOf([&] { readFile(folder_ / "none"); }),
              "cannot read " + (folder_ / "none").string() + ": No such file or directory");
    EXPECT_EQ(errorOf([&] { readFile(folder_); }),
              "cannot read " + folder_.string() + ": Is a directory");
}

} // namespace modelc
