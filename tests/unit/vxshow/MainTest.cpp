#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

/// What `vxshow` with these arguments shows on a terminal.
std::string shownOnATerminal(std::vector<std::string> const & arguments) {
    int const ours = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_EQ(grantpt(ours), 0);
    EXPECT_EQ(unlockpt(ours), 0);
    int const theirs = open(ptsname(ours), O_RDWR | O_NOCTTY | O_CLOEXEC);
    Process process(arguments, {.outFd = theirs});
    EXPECT_EQ(process.finish().status, 0);
    std::string text;
    std::array<char, 4096> some;
    for (pollfd fd{ours, POLLIN, 0}; poll(&fd, 1, 0) > 0;) {
        auto const got = read(ours, some.data(), some.size());
        if (got <= 0) {
            break;
        }
        text.append(some.data(), static_cast<std::size_t>(got));
    }
    close(theirs);
    close(ours);
    return text;
}

/// A state with one switch, whose name is `name` in JSON.
std::string stateOfSwitch(std::string const & name) {
    return R"({"format": "vxlan-controller-state", "version": 1, "received": {"switches": {")" +
           name + R"(": {"10": {"unicast": {"02:00:00:00:00:01": {"vtep": "10.0.0.1"}}}}}}})";
}

} // namespace

TEST(Main, ControlCharactersInASwitchNameAreReplacedOnATerminal) {
    TemporaryFile const state(stateOfSwitch(R"(leaf\u001b[2J)"));
    std::vector<std::string> const arguments{"--state", state.path(), "mac", "received"};
    EXPECT_NE(vxshow(arguments).out.find("leaf\x1b[2J"), std::string::npos);
    auto const shown = shownOnATerminal(arguments);
    EXPECT_NE(shown.find("leaf?[2J"), std::string::npos) << shown;
    EXPECT_EQ(shown.find('\x1b'), std::string::npos);
}

TEST(Main, InvisibleCharactersInASwitchNameAreReplacedOnlyOnATerminal) {
    TemporaryFile const state(stateOfSwitch(R"(leaf\u202e1\u200b)"));
    std::vector<std::string> const arguments{"--state", state.path(), "mac", "received"};
    EXPECT_NE(vxshow(arguments).out.find("leaf\u202e1\u200b"), std::string::npos);
    auto const shown = shownOnATerminal(arguments);
    EXPECT_NE(shown.find("leaf?1?"), std::string::npos) << shown;
}
