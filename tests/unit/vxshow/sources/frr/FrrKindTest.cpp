#include "vxshow/sources/frr/FrrKind.h"

#include "tests/unit/vxshow/sources/fabric/Fabrics.h"
#include "vxshow/sources/frr/VtyshAccess.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;

namespace {

sources::frr::VtyshCommand commandOf(std::string_view lines) {
    return accessOf<sources::frr::VtyshAccess>(sourceOf(frr(lines))).command();
}

} // namespace

TEST(FrrKind, TheCommandIsVtyshUnlessItIsGiven) {
    EXPECT_EQ(commandOf("").words, std::vector<std::string>{"vtysh"});
    EXPECT_EQ(commandOf(R"(command = ["docker", "exec", "a b", "vtysh"])").words,
              (std::vector<std::string>{"docker", "exec", "a b", "vtysh"}));
}

TEST(FrrKind, ACommandIsOneOrMoreWords) {
    EXPECT_EQ(refusalOf(frr("command = []")), "4:11: source[0].command: found an empty array, "
                                              "expected an array of the words of a command");
    EXPECT_EQ(refusalOf(frr("command = \"vtysh\"")),
              "4:11: source[0].command: found \"vtysh\", expected an array of the words of a "
              "command");
    constexpr auto expected = ", expected a text that is not empty and without U+0000";
    EXPECT_EQ(refusalOf(frr("command = [\"ssh\", \"\"]")),
              std::string("4:19: source[0].command[1]: found \"\"") + expected);
    EXPECT_EQ(refusalOf(frr("command = [7]")),
              std::string("4:12: source[0].command[0]: found 7") + expected);
    EXPECT_EQ(refusalOf(frr("command = [\"a\\u0000b\"]")),
              std::string("4:12: source[0].command[0]: found \"a\\x00b\"") + expected);
}

TEST(FrrKind, ThePathSpaceIsAWord) {
    EXPECT_EQ(commandOf("").pathSpace, "");
    EXPECT_EQ(commandOf("path_space = \"Leaf_1-a\"").pathSpace, "Leaf_1-a");
    for (auto const * const bad : {"", "-a", "a/b", "a b", "a.b", "..", "a;b"}) {
        EXPECT_EQ(refusalOf(frr("path_space = \"" + std::string(bad) + '"')),
                  "4:14: source[0].path_space: found \"" + std::string(bad) +
                      "\", expected a path space: letters, digits, \"_\" and \"-\", which is not "
                      "first");
    }
    EXPECT_EQ(refusalOf(frr("path_space = 1")),
              "4:14: source[0].path_space: found 1, expected a path space: letters, digits, "
              "\"_\" and \"-\", which is not first");
}

TEST(FrrKind, ACommandThroughSshHasARemoteShell) {
    EXPECT_FALSE(commandOf("").remoteShell);
    EXPECT_TRUE(commandOf(R"(command = ["ssh", "leaf1", "vtysh"])").remoteShell);
    EXPECT_TRUE(commandOf(R"(command = ["nice", "/usr/bin/ssh", "leaf1", "vtysh"])").remoteShell);
    EXPECT_FALSE(commandOf(R"(command = ["sshx", "myssh", "ssh/x", "SSH"])").remoteShell);
}

TEST(FrrKind, TheRemoteShellCanBeSet) {
    EXPECT_FALSE(commandOf("command = [\"ssh\", \"x\"]\nremote_shell = false").remoteShell);
    EXPECT_TRUE(commandOf("remote_shell = true").remoteShell);
    EXPECT_EQ(refusalOf(frr("remote_shell = \"yes\"")),
              "4:16: source[0].remote_shell: found \"yes\", expected true or false");
    EXPECT_EQ(refusalOf(frr("remote_shell = 1")),
              "4:16: source[0].remote_shell: found 1, expected true or false");
}

TEST(FrrKind, TheShortFormIsTheVtyshOfThisMachine) {
    auto const source = sources::frr::localSource();
    EXPECT_EQ(source.name, "frr");
    EXPECT_EQ(source.role, Role::switches);
    EXPECT_EQ(accessOf<sources::frr::VtyshAccess>(source).command(), sources::frr::VtyshCommand());
}

} // namespace vxshow::test
