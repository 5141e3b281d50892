#include "tests/unit/vxshow/OnTerminal.h"

#include <gtest/gtest.h>

namespace {

/// What `vxshow` with these arguments shows on a terminal.
std::string shownOnATerminal(std::vector<std::string> const & arguments) {
    Finished const finished = vxshowOnTerminal(arguments);
    EXPECT_EQ(finished.status, 0);
    return finished.out;
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
    EXPECT_NE(runVxshow(arguments).out.find("leaf\x1b[2J"), std::string::npos);
    auto const shown = shownOnATerminal(arguments);
    EXPECT_NE(shown.find("leaf?[2J"), std::string::npos) << shown;
    EXPECT_EQ(shown.find('\x1b'), std::string::npos);
}

TEST(Main, InvisibleCharactersInASwitchNameAreReplacedOnlyOnATerminal) {
    TemporaryFile const state(stateOfSwitch(R"(leaf\u202e1\u200b)"));
    std::vector<std::string> const arguments{"--state", state.path(), "mac", "received"};
    EXPECT_NE(runVxshow(arguments).out.find("leaf\u202e1\u200b"), std::string::npos);
    auto const shown = shownOnATerminal(arguments);
    EXPECT_NE(shown.find("leaf?1?"), std::string::npos) << shown;
}
