#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"
#include "tests/unit/vxshow/TerminalProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <regex>

/// `--watch`, on a terminal and in a pipe.
namespace {

/// A fabric of one source of FRR, which answers as long as the file `up` is there.
class WatchedFabric {
public:
    WatchedFabric() {
        setUp(true);
        std::ofstream(fabric())
            << "[[source]]\nkind = \"frr\"\nname = \"leaf1\"\n"
            << "command = [\"sh\", \"-c\", '''test -e " << up()
            << " || { echo Exiting: failed to connect to any daemons. >&2; exit 1; }\n"
            << R"(for word; do case $word in show*)
  echo "h# $word"
  case $word in
  *vni\ detail*) echo '[{"vni":10,"type":"L2","vtepIp":"10.0.0.1","numMacs":1}]';;
  *) echo '{}';;
  esac;; esac; done''', "vtysh"]
)";
    }

    void setUp(bool isUp) const {
        if (isUp) {
            std::ofstream(up()) << "";
        } else {
            std::filesystem::remove(up());
        }
    }

    std::vector<std::string> watching(std::vector<std::string> const & command) const {
        std::vector<std::string> words{"--fabric", fabric(), "--watch", "1"};
        words.insert(words.end(), command.begin(), command.end());
        return words;
    }

private:
    std::string fabric() const { return folder_.file("fabric.toml"); }

    std::string up() const { return folder_.file("up"); }

    Folder folder_;
};

/// Reads from the process until `text` has come, for at most a minute.
std::string readUntil(Process & process, std::string const & text) {
    std::string all;
    for (int count = 0; count < 600 && all.find(text) == std::string::npos; ++count) {
        all += process.readSome(65536);
    }
    EXPECT_NE(all.find(text), std::string::npos) << all;
    return all;
}

constexpr char const * watchedRow = "leaf1             10          0000.0000.0000  10.0.0.1";

} // namespace

TEST(Watched, QEndsIt) {
    WatchedFabric const fabric;
    TerminalProcess terminal(fabric.watching({"mac", "received"}), {});
    terminal.waitFor(watchedRow);
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 0);
}

TEST(Watched, TheTitleTheHeadersAndTheRemarksHaveColour) {
    WatchedFabric const fabric;
    TerminalProcess terminal(fabric.watching({"mac", "received"}),
                             {.columns = 120, .environment = {{"NO_COLOR", ""}}});
    terminal.waitFor("\x1b[K\x1b[1mvxshow mac received, every 1 s");
    terminal.waitFor("\x1b[K\x1b[1m         Received Mac Address Table\x1b[m");
    fabric.setUp(false);
    terminal.waitFor("\x1b[K\x1b[31mSTALE since ");
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 3);
}

TEST(Watched, CtrlCEndsIt) {
    WatchedFabric const fabric;
    TerminalProcess terminal(fabric.watching({"mac", "received"}), {});
    terminal.waitFor(watchedRow);
    terminal.type("\x03");
    EXPECT_EQ(terminal.finish(), 130);
}

TEST(Watched, KeysShowOtherParts) {
    WatchedFabric const fabric;
    TerminalProcess terminal(fabric.watching({"mac", "received"}), {.lines = 8});
    terminal.waitFor("lines more");
    terminal.type("\x1b[B");
    terminal.waitFor("lines 2 to 5 of 14");
    terminal.type("\x1b[6~");
    terminal.waitFor("lines 6 to 9 of 14");
    terminal.type("G");
    terminal.waitFor("lines 11 to 14 of 14");
    terminal.type("\x1b[A");
    terminal.waitFor("lines 10 to 13 of 14");
    terminal.type("\x1b[5~");
    terminal.waitFor("lines 6 to 9 of 14");
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 0);
}

TEST(Watched, AStaleSourceSaysSoFirst) {
    WatchedFabric const fabric;
    TerminalProcess terminal(fabric.watching({"mac", "received"}), {.columns = 120});
    terminal.waitFor(watchedRow);
    fabric.setUp(false);
    terminal.waitFor(": leaf1: unreachable: Exiting: failed to connect to any daemons.");
    auto const drawn = terminal.waitFor("STALE since ");
    auto const stale = drawn.find("STALE since ");
    EXPECT_LT(stale, drawn.find("leaf1: unreachable"));
    // The last good table stays; the terminal adds a carriage return to each line end.
    terminal.waitFor("any daemons.\r\r\n\x1b[K\r\r\n\x1b[K         Received Mac");
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 3);
}

TEST(Watched, AFirstReadingThatFailsIsTriedAgain) {
    WatchedFabric const fabric;
    fabric.setUp(false);
    TerminalProcess terminal(fabric.watching({"mac", "received"}), {});
    terminal.waitFor("nothing read yet");
    terminal.waitFor("leaf1: unreachable: Exiting: failed to connect to any daemons.");
    fabric.setUp(true);
    terminal.waitFor(watchedRow);
    terminal.type("q");
    EXPECT_EQ(terminal.finish(), 0);
}

TEST(Watched, InAPipeJsonSaysWhatIsStale) {
    WatchedFabric const fabric;
    Process process(fabric.watching({"--json", "mac", "received"}));
    auto const first = readUntil(process, "leaf1");
    std::regex const head(R"(\{"frame":\{"time":"20[0-9T:.-]*Z","stale":\[\],"failed":\[\]\}\}\n)");
    EXPECT_TRUE(std::regex_search(first, head, std::regex_constants::match_continuous)) << first;
    fabric.setUp(false);
    readUntil(process, R"("stale":["leaf1"],"failed":[]}})");
    process.signal(SIGINT);
    EXPECT_EQ(process.finish().status, 130);
}

TEST(Watched, InAPipeTextHasNoFrames) {
    WatchedFabric const fabric;
    Process process(fabric.watching({"mac", "received"}));
    EXPECT_TRUE(
        readUntil(process, watchedRow).starts_with("         Received Mac Address Table\n"));
    process.signal(SIGINT);
    EXPECT_EQ(process.finish().status, 130);
}
