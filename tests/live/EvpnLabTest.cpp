#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

/// The lab of daemons runs as root, so what it does not touch matters as much as what it does.
class EvpnLabAmongOthers : public testing::Test {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::evpn); }

    std::string prefix() const { return prefix_; }

    /// Runs `evpn-lab` on a directory.
    Finished lab(std::string const & directory, std::string const & word,
                 Words const & environment = {}) const {
        return run(Words{"env", "EVPN_LAB_PREFIX=" + prefix_, "EVPN_LAB_DIR=" + directory} +
                   environment + Words{labProgram("evpn-lab"), word} +
                   (word == "up" ? Words{"--parent", std::to_string(getpid())} : Words{}));
    }

    /// Expects it to refuse to come up, with one line that says why.
    void expectRefused(std::string const & directory, std::string const & why,
                       Words const & environment = {}) const {
        auto const finished = lab(directory, "up", environment);
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(linesOf(finished.err).size(), 1U) << finished.err;
        EXPECT_NE(finished.err.find(why), std::string::npos) << finished.err;
    }

    static std::string program(Folder const & folder, std::string const & name,
                               std::string const & script) {
        auto path = folder.write(name, script);
        std::filesystem::permissions(path, std::filesystem::perms(0755));
        return path;
    }

private:
    std::string prefix_ = "other" + std::to_string(getpid()) + "-";
};

} // namespace

TEST_F(EvpnLabAmongOthers, ADirectoryWithoutALabIsLeftAlone) {
    Folder const folder;
    auto const file = folder.write("file", "kept");
    std::filesystem::create_directory(folder.file("run"));
    expectRefused(folder.path(), "is not empty and has no lab in it");
    EXPECT_EQ(lab(folder.path(), "down").status, 0);
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_TRUE(std::filesystem::exists(folder.file("run")));
}

TEST_F(EvpnLabAmongOthers, ANamespaceThatItDidNotMakeIsLeftAlone) {
    Folder const folder;
    auto const name = prefix() + "vtep2";
    outputOf({"ip", "netns", "add", name});
    expectRefused(folder.file("new"), "the namespace " + name + " exists");
    EXPECT_EQ(lab(folder.file("new"), "down").status, 0);
    EXPECT_TRUE(std::filesystem::exists("/run/netns/" + name));
    outputOf({"ip", "netns", "delete", name});
}

TEST_F(EvpnLabAmongOthers, DownRemovesOnlyWhatTheMarkerNames) {
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
    expectRefused(folder.file("new"), space + " exists");
    auto const marked = folder.file("marked");
    std::filesystem::create_directory(marked);
    folder.write("marked/made", "prefix " + prefix() + "\n");
    EXPECT_EQ(lab(marked, "down").status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(space));
    std::filesystem::remove(space);
}

TEST_F(EvpnLabAmongOthers, ADirectoryTooLongForSocketPathsIsRefused) {
    Folder const folder;
    auto const directory = folder.file(std::string(60, 'x'));
    expectRefused(directory, "only 107 are allowed");
    EXPECT_FALSE(std::filesystem::exists(directory));
}

TEST_F(EvpnLabAmongOthers, ADirectoryThatTheDaemonsCannotEnterIsRefused) {
    Folder const folder;
    auto const closed = folder.file("closed");
    std::filesystem::create_directory(closed);
    std::filesystem::permissions(closed, std::filesystem::perms(0700));
    expectRefused(closed + "/lab", "the user frr, who cannot enter " + closed + ":");
    EXPECT_TRUE(std::filesystem::is_empty(closed));
}

TEST_F(EvpnLabAmongOthers, TheReasonWhyADaemonDidNotStartIsReported) {
    Folder const folder;
    Folder const daemons;
    for (auto const * const name : {"zebra", "bgpd"}) {
        program(daemons, name, "#!/bin/sh\necho first; echo no luck >&2\nexit 1\n");
    }
    expectRefused(folder.file("lab"), "vtep1 did not start: no luck",
                  {"FRR_LIB=" + daemons.path()});
    EXPECT_FALSE(std::filesystem::exists(folder.file("lab")));
}

TEST_F(EvpnLabAmongOthers, ItComesUpWhateverItInherits) {
    // New namespaces whose hosts would not answer ARP requests for their own addresses.
    Folder const programs;
    program(programs, "ip", R"(#!/bin/bash
PATH=${PATH#*:}
ip "$@" || exit
[[ "$1 $2" != "netns add" ]] ||
    ip netns exec "$3" sysctl -qw \
        net.ipv4.conf.{all,default,lo}.{rp_filter,arp_filter}=1 \
        net.ipv4.conf.{all,default,lo}.{arp_announce,arp_ignore}=2
)");
    Folder const folder;
    auto const up = lab(folder.file("lab"), "up",
                        {"PATH=" + programs.path() + ":/usr/bin:/bin", "sh", "-c",
                         R"(umask 077; ulimit -S -n $(ulimit -H -n); exec "$0" "$@")"});
    EXPECT_EQ(up.status, 0) << up.err;
    std::ifstream pidFile(folder.file("lab/run/" + prefix() + "vtep1/zebra.pid"));
    std::string pid;
    pidFile >> pid;
    auto const limits = outputOf({"grep", "open files", "/proc/" + pid + "/limits"});
    EXPECT_EQ(limits.substr(0, 31), "Max open files            1024 ");
    EXPECT_EQ(lab(folder.file("lab"), "down").status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.file("lab")));
}
