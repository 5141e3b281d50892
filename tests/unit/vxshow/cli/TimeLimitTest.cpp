#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <sys/resource.h>

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
    return vxshow(arguments, {.input = text});
}

} // namespace

TEST(TimeLimit, OfTheFabricFileEndsTheWholeReading) {
    auto const finished = listing({}, "time_limit = 0.3\n" + fabric);
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.err, "vxshow: hung: time limit: no answer within 0.3 s\n");
}

TEST(TimeLimit, OfTheCommandLineComesFirst) {
    auto const finished = listing({"--time-limit", "0.2"}, "time_limit = 50\n" + fabric);
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.err, "vxshow: hung: time limit: no answer within 0.2 s\n");
}

TEST(TimeLimit, ASourceWhoseTurnDoesNotComeIsNamed) {
    std::string many;
    for (unsigned number = 0; number < 5; ++number) {
        many += source("hung " + std::to_string(number), "exec sleep 60");
    }
    // With so few descriptors, the sources are asked one after the other.
    auto const finished = vxshow({"--time-limit", "0.2", "--fabric", "-", "mac", "received"},
                                 {.input = many, .inChild = [] {
                                      rlimit const few{24, 24};
                                      setrlimit(RLIMIT_NOFILE, &few);
                                  }});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "vxshow: hung 0: time limit: no answer within 0.2 s\n"
                            "vxshow: hung 1: time limit: not asked within 0.2 s\n"
                            "vxshow: hung 2: time limit: not asked within 0.2 s\n"
                            "vxshow: hung 3: time limit: not asked within 0.2 s\n"
                            "vxshow: hung 4: time limit: not asked within 0.2 s\n");
}

TEST(TimeLimit, WhatIsNotATimeIsRefused) {
    for (std::string const text : {"0", "-1", "3601", "nan", "inf", "1e1", "5s", "0.0001"}) {
        EXPECT_EQ(refused({"--time-limit=" + text, "mac", "received"}),
                  "--time-limit: '" + text + "': expected seconds, from 0.001 to 3600");
    }
}
