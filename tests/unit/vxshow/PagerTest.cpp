#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/TerminalProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

/// Listings that are longer than the terminal.
namespace {

/// A state of which `mac received` prints `count` rows, with 13 lines around them.
class PagedState {
public:
    explicit PagedState(unsigned count) {
        std::string entries;
        for (unsigned number = 0; number < count; ++number) {
            char mac[32];
            std::snprintf(mac, sizeof mac, "02:00:00:00:%02x:%02x", number / 256, number % 256);
            entries.append(entries.empty() ? "\"" : ",\"").append(mac);
            entries.append(R"(":{"vtep":"10.0.0.1"})");
        }
        std::ofstream(path()) << snapshotWith(
            "received", R"({"switches":{"leaf1":{"10":{"unicast":{)" + entries + "}}}}}");
    }

    std::string path() const { return folder_.file("state.json"); }

    std::string file(std::string const & name) const { return folder_.file(name); }

    std::vector<std::string> command() const { return {"--state", path(), "mac", "received"}; }

private:
    Folder folder_;
};

constexpr char const * lastRow = "leaf1             10          0200.0000.0063";

} // namespace

TEST(Pager, AListingThatFitsIsShownWithoutOne) {
    PagedState const state(3);
    TerminalProcess terminal(state.command(), {.environment = {{"PAGER", "false"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_NE(terminal.drawn().find("Total Mac Addresses for this criterion: 3\n"),
              std::string::npos);
}

TEST(Pager, ALongerListingIsShownInIt) {
    PagedState const state(100);
    TerminalProcess terminal(state.command(), {.environment = {{"PAGER", "sed s/leaf1/paged/"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_EQ(terminal.drawn().find("leaf1"), std::string::npos);
    EXPECT_NE(terminal.drawn().find("paged             10          0200.0000.0063"),
              std::string::npos);
}

TEST(Pager, WrappedLinesCount) {
    PagedState const state(8);
    for (unsigned short const columns : std::vector<unsigned short>{80, 20}) {
        TerminalProcess terminal(
            state.command(),
            {.columns = columns, .environment = {{"PAGER", "sed s/leaf1/paged/"}}});
        EXPECT_EQ(terminal.finish(), 0);
        EXPECT_EQ(terminal.drawn().find("paged") != std::string::npos, columns == 20);
    }
}

TEST(Pager, IsLessUnlessTheEnvironmentNamesOne) {
    PagedState const state(100);
    TerminalProcess terminal(state.command(), {});
    terminal.waitFor("\x1b[K");
    EXPECT_EQ(terminal.drawn().find(lastRow), std::string::npos);
    terminal.type("G");
    terminal.waitFor(lastRow);
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 0);
}

TEST(Pager, WhenItIsClosedEarlyTheListingEnds) {
    PagedState const state(65536);
    TerminalProcess terminal(state.command(), {});
    terminal.waitFor("\x1b[K");
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 0);
}

TEST(Pager, ClosedEarlyTheStatusIsThatOfTheState) {
    PagedState const state(1000);
    auto const incomplete = state.file("incomplete.json");
    std::ifstream file(state.path());
    std::string text((std::istreambuf_iterator<char>(file)), {});
    text.insert(text.rfind('}'), R"(,"origin":{"made":"2026-11-23T02:10:11Z","version":"v",)"
                                 R"("sources":[{"name":"leaf2","kind":"frr","role":"switch",)"
                                 R"("failure":"gone"}]})");
    std::ofstream(incomplete) << text;
    TerminalProcess terminal({"--state", incomplete, "mac", "received"},
                             {.environment = {{"PAGER", "head -n 3"}}});
    EXPECT_EQ(terminal.finish(), 3);
}

TEST(Pager, CtrlCEndsBoth) {
    PagedState const state(65536);
    TerminalProcess terminal(state.command(), {});
    terminal.waitFor("\x1b[K");
    terminal.type("\x03");
    EXPECT_EQ(terminal.finish(), 130);
}

TEST(Pager, CtrlCEndsBothAfterTheListing) {
    PagedState const state(100);
    TerminalProcess terminal(state.command(), {});
    terminal.type("G");
    terminal.waitFor(lastRow);
    terminal.type("\x03");
    EXPECT_EQ(terminal.finish(), 130);
}

TEST(Pager, EndsWithTheProgram) {
    PagedState const state(100);
    auto const ended = state.file("ended");
    TerminalProcess terminal(state.command(),
                             {.environment = {{"PAGER", "trap 'echo bye > " + ended +
                                                            "; exit' TERM; echo paged; while :; do "
                                                            "sleep 0.01; done"}}});
    terminal.waitFor("paged");
    kill(terminal.pid(), SIGTERM);
    EXPECT_EQ(terminal.finish(), 128 + SIGTERM);
    std::string word;
    std::ifstream(ended) >> word;
    EXPECT_EQ(word, "bye");
}

TEST(Pager, IsNotUsedWhereItCannotBe) {
    PagedState const state(100);
    using Environment = std::vector<std::pair<std::string, std::string>>;
    for (auto const & environment :
         {Environment{{"PAGER", "cat"}}, Environment{{"PAGER", "no-such-pager -x"}},
          Environment{{"PAGER", "false"}, {"TERM", "dumb"}},
          Environment{{"PAGER", "false"}, {"TERM", ""}}, Environment{{"PAGER", " "}}}) {
        TerminalProcess terminal(state.command(), {.environment = environment});
        EXPECT_EQ(terminal.finish(), 0);
        EXPECT_NE(terminal.drawn().find(lastRow), std::string::npos);
    }
    auto without = state.command();
    without.emplace_back("--no-pager");
    TerminalProcess terminal(without, {.environment = {{"PAGER", "false"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_NE(terminal.drawn().find(lastRow), std::string::npos);
}

TEST(Pager, OfSeveralWordsIsRunByTheShell) {
    PagedState const state(100);
    TerminalProcess terminal(state.command(),
                             {.environment = {{"PAGER", "sed 's/leaf1/a b/' | tr b c"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_NE(terminal.drawn().find("a c             10"), std::string::npos);
}

TEST(Pager, ReceivesNoControlFunctionsFromNames) {
    PagedState const state(100);
    auto const path = state.file("control.json");
    std::ofstream(path) << snapshotWith("received",
                                        R"({"switches":{"\u001b[2J":{"10":{"unicast":{)"
                                        R"("02:00:00:00:00:01":{"vtep":"10.0.0.1"}}}}}})");
    TerminalProcess terminal({"--state", path, "mac", "received"},
                             {.lines = 5, .environment = {{"PAGER", "sed s/x/x/"}}});
    EXPECT_EQ(terminal.finish(), 0);
    EXPECT_NE(terminal.drawn().find("?[2J"), std::string::npos);
}
