#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

/// The time limit of the whole reading.
namespace {

std::string source(std::string const & name, std::string const & script) {
    return "[[source]]\nkind = \"frr\"\nname = \"" + name + "\"\ntime_limit = 60\n" +
           "command = [\"sh\", \"-c\", '''" + script + "''', \"vtysh\"]\n";
}

/// A source that answers that there are no VNIs, and one that does not answer.
std::string const fabric =
    source("quick",
           R"(for word; do case $word in show*) echo "host# $word"; echo '[]';; esac; done)") +
    source("hung", "exec sleep 60");

Finished listing(std::vector<std::string> arguments, std::string const & text) {
    arguments.insert(arguments.end(), {"--fabric", "-", "mac", "received"});
    return runVxshow(arguments, {.input = text});
}

} // namespace

TEST(TimeLimit, OfTheFabricFileEndsTheWholeReading) {
    auto const finished = listing({}, "time_limit = 0.3\n" + fabric);
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.err,
              "vxshow: hung: time limit: no answer within 0.3 s; time_limit in the fabric file "
              "allows more\n");
}

TEST(TimeLimit, OfTheCommandLineComesFirst) {
    auto const finished = listing({"--time-limit", "0.2"}, "time_limit = 50\n" + fabric);
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.err,
              "vxshow: hung: time limit: no answer within 0.2 s; --time-limit allows more\n");
}

TEST(TimeLimit, ASourceWhoseTurnDoesNotComeIsNamed) {
    std::string many;
    for (unsigned number = 0; number < 5; ++number) {
        many += source("hung " + std::to_string(number), "exec sleep 60");
    }
    // With so few descriptors, the sources are asked one after the other.
    auto const finished = runVxshow({"--time-limit", "0.2", "--fabric", "-", "mac", "received"},
                                    {.input = many, .inChild = [] {
                                         rlimit const few{24, 24};
                                         setrlimit(RLIMIT_NOFILE, &few);
                                     }});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err,
              "vxshow: hung 0: time limit: no answer within 0.2 s; --time-limit allows more\n"
              "vxshow: hung 1: time limit: not asked within 0.2 s; --time-limit allows more\n"
              "vxshow: hung 2: time limit: not asked within 0.2 s; --time-limit allows more\n"
              "vxshow: hung 3: time limit: not asked within 0.2 s; --time-limit allows more\n"
              "vxshow: hung 4: time limit: not asked within 0.2 s; --time-limit allows more\n");
}

TEST(TimeLimit, WhatIsNotATimeIsRefused) {
    for (std::string const text : {"0", "-1", "3601", "nan", "inf", "1e1", "5s", "0.0001"}) {
        EXPECT_EQ(refused({"--time-limit=" + text, "mac", "received"}),
                  "--time-limit: '" + text + "': expected seconds, from 0.001 to 3600");
    }
}

namespace {

/// What `vxshow --frr mac received` prints with `script` as this machine's vtysh.
Finished listingOfFrr(std::vector<std::string> arguments, std::string const & script) {
    Folder const folder;
    std::ofstream(folder.file("vtysh")) << "#!/bin/sh\n" << script << "\n";
    EXPECT_EQ(chmod(folder.file("vtysh").c_str(), 0755), 0);
    arguments.insert(arguments.end(), {"--frr", "mac", "received"});
    std::string const path = folder.path() + ":" + std::getenv("PATH");
    return runVxshow(arguments, {.inChild = [&] { setenv("PATH", path.c_str(), 1); }});
}

} // namespace

TEST(TimeLimit, OfASourceOnTheCommandLineNamesTheOption) {
    auto const finished = listingOfFrr({"--time-limit", "0.2"}, "exec sleep 60");
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err.substr(finished.err.find("time limit")),
              "time limit: no answer within 0.2 s; --time-limit allows more\n");
}

/// A source has 5 seconds unless the option says otherwise.
TEST(TimeLimit, OfASourceOnTheCommandLineCanBeRaised) {
    auto const finished = listingOfFrr(
        {"--time-limit", "50"},
        R"(sleep 5.2; for word; do case $word in show*) echo "host# $word"; echo '[]';; esac; done)");
    EXPECT_EQ(finished.err.find("time limit"), std::string::npos) << finished.err;
}
