#include "tests/live/Labs.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace {

/// The lab of daemons needs root, so what it refuses to touch matters as much as what it does.
class EvpnLabAmongOthers : public testing::Test {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::evpn); }

    std::string prefix() const { return prefix_; }

    /// Runs `evpn-lab` on a directory.
    Finished lab(std::string const & directory, std::string const & word) const {
        return run({"env", "EVPN_LAB_PREFIX=" + prefix_, "EVPN_LAB_DIR=" + directory,
                    labProgram("evpn-lab"), word});
    }

    /// Expects that it is not set up, and one line that says why.
    void expectRefused(std::string const & directory, std::string const & why) const {
        auto const finished = lab(directory, "up");
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(linesOf(finished.err).size(), 1U) << finished.err;
        EXPECT_NE(finished.err.find(why), std::string::npos) << finished.err;
    }

private:
    std::string prefix_ = "other" + std::to_string(getpid()) + "-";
};

} // namespace

TEST_F(EvpnLabAmongOthers, ADirectoryThatHoldsNoLabIsLeftAlone) {
    Folder const folder;
    auto const file = folder.write("file", "kept");
    std::filesystem::create_directory(folder.file("run"));
    expectRefused(folder.path(), "is not empty and holds no lab");
    EXPECT_EQ(lab(folder.path(), "down").status, 0);
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_TRUE(std::filesystem::exists(folder.file("run")));
}

TEST_F(EvpnLabAmongOthers, ANamespaceThatItHasNotMadeIsLeftAlone) {
    Folder const folder;
    auto const name = prefix() + "vtep2";
    outputOf({"ip", "netns", "add", name});
    expectRefused(folder.file("new"), "a namespace " + name + " is there");
    EXPECT_EQ(lab(folder.file("new"), "down").status, 0);
    EXPECT_TRUE(std::filesystem::exists("/run/netns/" + name));
    outputOf({"ip", "netns", "delete", name});
}

TEST_F(EvpnLabAmongOthers, DownRemovesWhatTheMarkerNamesAndNothingElse) {
    Folder const folder;
    auto const ours = prefix() + "ours";
    auto const theirs = prefix() + "vtep1";
    for (std::string const & name : {ours, theirs}) {
        outputOf({"ip", "netns", "add", name});
    }
    folder.write("made", "prefix " + prefix() + "\nnamespace " + ours + "\n");
    auto const file = folder.write("file", "kept");
    EXPECT_EQ(lab(folder.path(), "down").status, 0);
    EXPECT_FALSE(std::filesystem::exists("/run/netns/" + ours));
    EXPECT_TRUE(std::filesystem::exists("/run/netns/" + theirs));
    EXPECT_FALSE(std::filesystem::exists(folder.file("made")));
    EXPECT_TRUE(std::filesystem::exists(file));
    outputOf({"ip", "netns", "delete", theirs});
}

TEST_F(EvpnLabAmongOthers, APathSpaceThatLeadsElsewhereIsLeftAlone) {
    Folder const folder;
    std::filesystem::create_directories("/var/run/frr");
    auto const space = "/var/run/frr/" + prefix() + "vtep3";
    std::filesystem::create_symlink(folder.path(), space);
    expectRefused(folder.file("new"), space + " is there");
    auto const marked = folder.file("marked");
    std::filesystem::create_directory(marked);
    folder.write("marked/made", "prefix " + prefix() + "\n");
    EXPECT_EQ(lab(marked, "down").status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(space));
    std::filesystem::remove(space);
}
