#include "vxshow/system/Leftover.h"

#include "tests/unit/vxshow/system/Programs.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace system;

namespace {

class Leftovers : public testing::Test {
protected:
    std::string path(std::string const & name) const { return folder_.path(name); }

    std::string put(std::string const & name) const { return folder_.put(name, "text", 0600); }

    bool exists(std::string const & name) const { return std::filesystem::exists(path(name)); }

private:
    Folder folder_;
};

} // namespace

TEST_F(Leftovers, AFileIsRemovedAndNoOther) {
    auto const file = put("a");
    put("b");
    Leftover leftover;
    leftover.remember(file.c_str());
    removeLeftovers();
    EXPECT_FALSE(exists("a"));
    EXPECT_TRUE(exists("b"));
}

TEST_F(Leftovers, AFolderIsRemovedWithItsFiles) {
    auto const folder = path("folder");
    std::filesystem::create_directory(folder);
    for (int number = 0; number < 300; ++number) {
        put("folder/" + std::string(static_cast<std::size_t>(number / 2), 'x') +
            std::to_string(number));
    }
    Leftover leftover;
    leftover.remember(folder.c_str());
    removeLeftovers();
    EXPECT_FALSE(exists("folder"));
}

TEST_F(Leftovers, AForgottenOneStays) {
    auto const first = put("a");
    auto const second = put("b");
    auto const third = put("c");
    Leftover leftover;
    leftover.remember(first.c_str());
    leftover.remember(second.c_str());
    {
        Leftover ended;
        ended.remember(third.c_str());
    }
    removeLeftovers();
    EXPECT_TRUE(exists("a"));
    EXPECT_FALSE(exists("b"));
    EXPECT_TRUE(exists("c"));
}

TEST_F(Leftovers, TooManyDoNoHarm) {
    std::array<std::string, 20> files;
    std::array<Leftover, 20> leftovers;
    for (std::size_t index = 0; index < files.size(); ++index) {
        files[index] = put(std::to_string(index));
        leftovers[index].remember(files[index].c_str());
    }
    removeLeftovers();
    EXPECT_FALSE(exists("7"));
    EXPECT_TRUE(exists("8"));
}

} // namespace vxshow::test
