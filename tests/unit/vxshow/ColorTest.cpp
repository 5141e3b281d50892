#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"
#include "tests/unit/vxshow/TerminalProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <regex>
#include <unistd.h>

namespace {

using Environment = std::vector<std::pair<std::string, std::string>>;

Environment const withColor{{"NO_COLOR", ""}};

struct Ended {
    std::string drawn;
    int status = -1;
};

/// What the terminal got from `vxshow`, without a pager.
Ended onTerminal(std::vector<std::string> arguments, Environment const & environment) {
    arguments.emplace_back("--no-pager");
    TerminalProcess terminal(arguments, {.lines = 24, .columns = 80, .environment = environment});
    int const status = terminal.finish();
    return {terminal.drawn(), status};
}

std::vector<std::string> example(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--state", EXAMPLE_FABRIC});
    return arguments;
}

std::string withoutColor(std::string const & text) {
    return std::regex_replace(text, std::regex("\x1b\\[[0-9]*m"), "");
}

bool hasColor(std::string const & text) {
    return text.find("\x1b[") != std::string::npos;
}

} // namespace

TEST(Color, HeadersAndTotalsHaveItOnATerminal) {
    auto const shown =
        onTerminal(example({"arp", "received", "--switch", "leaf3", "--vni", "20"}), withColor);
    EXPECT_EQ(
        shown.drawn,
        "\x1b[1m                        Received ARP Table\x1b[m\n"
        "-------------------------------------------------------------------------\n"
        "\x1b[1mSwitch              VNI      IP Address      MAC Address        Changes\x1b[m\n"
        "------------------- -------- --------------- ------------------ ---------\n"
        "leaf3               20       198.51.100.23   0000.5e00.5323     1        \n"
        "leaf3               20       198.51.100.24   0000.5e00.5324     13       \n"
        "leaf3               20       2001:db8:20::24 0000.5e00.5324     13       \n"
        "\n"
        "\x1b[1mTotal IP addresses for this criterion: 3\x1b[m\n");
}

TEST(Color, WithoutItTheTextIsTheSame) {
    for (auto const & words :
         std::vector<std::vector<std::string>>{{"mac", "received"},
                                               {"mac", "advertised"},
                                               {"arp", "received"},
                                               {"arp", "advertised"},
                                               {"router", "map"},
                                               {"router", "detail"},
                                               {"router", "routes"},
                                               {"mac", "received", "-o", "wide"}}) {
        auto const colored = onTerminal(example(words), withColor).drawn;
        EXPECT_TRUE(hasColor(colored)) << words[0] << words[1];
        EXPECT_EQ(withoutColor(colored), onTerminal(example(words), {}).drawn);
    }
}

TEST(Color, TheHeaderOfWideRowsHasIt) {
    auto const shown = onTerminal(
        example({"router", "routes", "-o", "wide", "--router", "internet", "--top", "1"}),
        withColor);
    EXPECT_EQ(shown.drawn, "\x1b[1mName      Prefix     Nexthop\x1b[m\n"
                           "internet  0.0.0.0/0  100.64.0.0\n");
}

TEST(Color, FormsForProgramsHaveNone) {
    for (std::string const form : {"json", "pretty", "csv", "jsonl"}) {
        auto const shown =
            onTerminal(example({"router", "map", "-o", form, "--color", "always"}), withColor);
        EXPECT_FALSE(hasColor(shown.drawn)) << form;
    }
}

TEST(Color, IsChosenByTheOptionThenByTheEnvironment) {
    auto const words = example({"router", "map"});
    auto const with = [&](std::string const & choice) {
        auto typed = words;
        typed.insert(typed.end(), {"--color", choice});
        return typed;
    };
    EXPECT_FALSE(hasColor(onTerminal(words, {{"NO_COLOR", "1"}}).drawn));
    EXPECT_FALSE(hasColor(onTerminal(words, {{"NO_COLOR", ""}, {"TERM", "dumb"}}).drawn));
    EXPECT_FALSE(hasColor(onTerminal(words, {{"NO_COLOR", ""}, {"TERM", ""}}).drawn));
    EXPECT_TRUE(hasColor(onTerminal(with("auto"), withColor).drawn));
    EXPECT_FALSE(hasColor(onTerminal(with("never"), withColor).drawn));
    EXPECT_TRUE(hasColor(onTerminal(with("always"), {{"NO_COLOR", "1"}}).drawn));
}

TEST(Color, AListingInAPipeOrAFileHasNone) {
    auto const words = example({"--color", "always", "mac", "received", "-o", "wide"});
    EXPECT_FALSE(hasColor(runVxshow(words, {}).out));
    Folder const folder;
    int const file = open(folder.file("out").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    EXPECT_EQ(runVxshow(example({"--color", "always", "router", "map"}), {.outFd = file}).status,
              0);
    close(file);
    std::ifstream in(folder.file("out"));
    std::string const written(std::istreambuf_iterator<char>(in), {});
    EXPECT_EQ(written, answer(exampleFabric(), {"router", "map"}));
}

TEST(Color, MessagesHaveIt) {
    auto const unknown = onTerminal(
        example({"router", "map", "--router", "prot", "-o", "csv", "--no-header"}), withColor);
    EXPECT_EQ(unknown.drawn, "\x1b[33mvxshow: --router: no router is named \"prot\"; did you mean "
                             "prod?\x1b[m\n");
    EXPECT_EQ(unknown.status, 4);
    auto const failed = onTerminal({"--state", "/nonexistent", "router", "map"}, withColor);
    EXPECT_EQ(failed.drawn, "\x1b[31mvxshow: /nonexistent: No such file or directory\x1b[m\n");
    EXPECT_EQ(failed.status, 1);
    auto const always =
        runVxshow({"--color", "always", "--state", "/nonexistent", "router", "map"}, {});
    EXPECT_EQ(always.err, "\x1b[31mvxshow: /nonexistent: No such file or directory\x1b[m\n");
    EXPECT_FALSE(hasColor(runVxshow({"--state", "/nonexistent", "router", "map"}, {}).err));
}

TEST(Color, ANameCannotBeginIt) {
    auto const state =
        snapshotWith("received", R"({"switches": {"\u001b[1mTotal x: 5": {"10": {"unicast":
                                        {"02:00:00:00:00:01": {"vtep": "10.0.0.1"}}}}}})");
    Folder const folder;
    std::ofstream(folder.file("state.json")) << state;
    auto const shown =
        onTerminal({"--state", folder.file("state.json"), "mac", "received"}, withColor).drawn;
    EXPECT_NE(shown.find("\n?[1mTotal x: 5    10          0200.0000.0001"), std::string::npos);
}

TEST(Color, APagerGetsIt) {
    auto const words = example({"mac", "received"});
    TerminalProcess terminal(words,
                             {.environment = {{"NO_COLOR", ""}, {"PAGER", "sed s/leaf1/paged/"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_NE(terminal.drawn().find("\x1b[1m         Received Mac Address Table\x1b[m\n"),
              std::string::npos);
    EXPECT_NE(terminal.drawn().find("\npaged "), std::string::npos);
}

TEST(Color, ALessThatLetsNoneThroughGetsNone) {
    Folder const folder;
    std::ofstream(folder.file("less")) << "#!/bin/sh\nexec cat\n";
    ASSERT_EQ(chmod(folder.file("less").c_str(), 0755), 0);
    auto const path = folder.file("") + ":" + std::getenv("PATH");
    for (std::string const options : {"FX", "FRX"}) {
        TerminalProcess terminal(
            example({"mac", "received"}),
            {.environment = {
                 {"NO_COLOR", ""}, {"PATH", path}, {"PAGER", "less"}, {"LESS", options}}});
        EXPECT_EQ(terminal.finish(), 0);
        EXPECT_EQ(hasColor(terminal.drawn()), options == "FRX");
    }
}

TEST(Color, DoesNotCountAsColumnsOfTheScreen) {
    TerminalProcess terminal(
        example({"router", "routes", "-o", "wide", "--router", "internet"}),
        {.lines = 7, .columns = 42, .environment = {{"NO_COLOR", ""}, {"PAGER", "false"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_NE(terminal.drawn().find("internet  ::/0"), std::string::npos) << terminal.drawn();
}

TEST(Color, AnotherWordIsRefused) {
    EXPECT_EQ(refused({"--color", "sometimes", "router", "map"}),
              "--color: 'sometimes': expected auto, always or never");
}
