#include "vxshow/system/ProgramPath.h"

#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace vxshow::test {

using namespace system;

namespace {

constexpr char const * anyScript = "#!/bin/sh\n";

/// Tests with the first folder as the current one; it has a program `here`.
class ProgramPaths : public testing::Test {
protected:
    ProgramPaths() {
        first_.put("here", anyScript, 0700);
        std::filesystem::current_path(first_.path());
    }

    ~ProgramPaths() override { std::filesystem::current_path(before_); }

    std::filesystem::path before_ = std::filesystem::current_path();
    Folder first_;
    Folder second_;
};

TEST_F(ProgramPaths, RelativeEntriesCountIfTheyAreUsed) {
    EXPECT_EQ(findProgram("here", "", RelativeEntries::use).path, "./here");
    EXPECT_EQ(findProgram("here", "/none:", RelativeEntries::use).path, "./here");
    EXPECT_EQ(findProgram("here", "x/..:.", RelativeEntries::use).path, "./here");
}

TEST_F(ProgramPaths, WhatIsOnlyInARelativeEntryIsRefused) {
    for (auto const * const path :
         {"", ".", ":/none", "/none:", "/none::/none", "./", "../x/.:."}) {
        auto const found = findProgram("here", path, RelativeEntries::skip);
        EXPECT_EQ(found.path, "") << path;
        EXPECT_EQ(found.error, ENOENT) << path;
        EXPECT_TRUE(found.refused) << path;
    }
}

TEST_F(ProgramPaths, WhatIsNowhereIsNotRefused) {
    auto const found = findProgram("nowhere", ".:/none", RelativeEntries::skip);
    EXPECT_EQ(found.path, "");
    EXPECT_EQ(found.error, ENOENT);
    EXPECT_FALSE(found.refused);
}

TEST_F(ProgramPaths, AnAbsoluteEntryAfterARelativeOneIsUsed) {
    second_.put("here", anyScript, 0700);
    EXPECT_EQ(findProgram("here", ".:" + second_.path(), RelativeEntries::skip).path,
              second_.path() + "/here");
}

TEST_F(ProgramPaths, AFolderIsNotAProgram) {
    std::filesystem::create_directory(second_.path("here"));
    auto const found = findProgram("here", second_.path(), RelativeEntries::skip);
    EXPECT_EQ(found.path, "");
    EXPECT_EQ(found.error, EACCES);
}

TEST_F(ProgramPaths, AnEmptyNameIsNotFound) {
    EXPECT_EQ(findProgram("", ".:" + first_.path(), RelativeEntries::use).error, ENOENT);
}

} // namespace

} // namespace vxshow::test
