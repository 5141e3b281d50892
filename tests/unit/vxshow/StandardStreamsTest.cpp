#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

std::vector<std::string> listingOf(TemporaryFile const & state) {
    return {"--state", state.path(), "mac", "received"};
}

Process::Setting closing(std::vector<int> const & descriptors) {
    return {.inChild = [descriptors] {
        for (int const descriptor : descriptors) {
            close(descriptor);
        }
    }};
}

} // namespace

TEST(StandardStreams, AClosedStandardOutputIsOneLineAndStatus1) {
    TemporaryFile const state(exampleFabric());
    auto const finished = runVxshow(listingOf(state), closing({STDOUT_FILENO}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.err.find("Bad file descriptor"), std::string::npos) << finished.err;
    EXPECT_EQ(finished.err.find('\n'), finished.err.size() - 1) << finished.err;
}

TEST(StandardStreams, HelpToAClosedStandardOutputIsOneLineAndStatus1) {
    auto const finished = runVxshow({"--help"}, closing({STDOUT_FILENO}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "vxshow: standard output: cannot be written\n");
}

TEST(StandardStreams, AClosedStandardErrorDoesNotChangeTheListing) {
    auto const expected = answer(exampleFabric(), {"mac", "received"});
    TemporaryFile const state(exampleFabric());
    auto arguments = listingOf(state);
    arguments.insert(arguments.end(), {"--trace", "9"});
    auto const finished = runVxshow(arguments, closing({STDERR_FILENO}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, expected);
}

TEST(StandardStreams, AClosedStandardInputDoesNotChangeTheListing) {
    auto const expected = answer(exampleFabric(), {"mac", "received"});
    TemporaryFile const state(exampleFabric());
    auto const finished = runVxshow(listingOf(state), closing({STDIN_FILENO}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, expected);
    EXPECT_EQ(finished.err, "");
}

TEST(StandardStreams, AStateFromAClosedStandardInputIsOneLineAndStatus1) {
    auto const finished = runVxshow({"--state", "-", "mac", "received"}, closing({STDIN_FILENO}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "vxshow: standard input: Bad file descriptor\n");
}

TEST(StandardStreams, AllClosedIsStatus1) {
    TemporaryFile const state(exampleFabric());
    auto const finished =
        runVxshow(listingOf(state), closing({STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.signal, 0);
}
