#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr char const * helpCommands =
    "Commands:\n"
    "  mac received    The MAC tables received from switches and other sources\n"
    "  mac advertised  The MAC tables advertised to switches or another destination\n"
    "  arp received    The ARP tables received from switches\n";

/// The lines that `vxshow` with these arguments, which print less than 4 KiB, shows on a terminal
/// of that width.
std::vector<std::string> linesOnATerminal(std::vector<std::string> const & arguments,
                                          unsigned columns) {
    int const ours = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_TRUE(ours >= 0 && grantpt(ours) == 0 && unlockpt(ours) == 0);
    int const theirs = open(ptsname(ours), O_RDWR | O_NOCTTY | O_CLOEXEC);
    winsize const size{24, static_cast<unsigned short>(columns), 0, 0};
    EXPECT_EQ(ioctl(ours, TIOCSWINSZ, &size), 0);
    Process process(arguments, {.outFd = theirs});
    EXPECT_EQ(process.finish().status, 0);
    std::array<char, 8192> shown;
    auto const got = read(ours, shown.data(), shown.size());
    close(theirs);
    close(ours);
    std::istringstream text(std::string(shown.data(), got < 0 ? 0 : static_cast<std::size_t>(got)));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line.substr(0, line.find('\r')));
    }
    return lines;
}

std::string helpOf(std::vector<std::string> const & arguments) {
    Finished const finished = runVxshow(arguments);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    return finished.out;
}

} // namespace

TEST(Help, TheBareProgramShowsItsCommandsAsAUsageError) {
    Finished const finished = runVxshow({});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    std::string const start = "Usage: vxshow [OPTIONS] COMMAND [FILTERS]\n\n";
    EXPECT_EQ(finished.err.substr(0, start.size()), start);
    EXPECT_NE(finished.err.find(helpCommands), std::string::npos) << finished.err;
    EXPECT_NE(finished.err.find("\n  router routes   The routes of"), std::string::npos);
    EXPECT_NE(
        finished.err.find("\n'vxshow help COMMAND' describes a command, 'vxshow --help' lists "
                          "all options.\n"),
        std::string::npos);
}

TEST(Help, HelpIsACommandToo) {
    EXPECT_EQ(helpOf({"help"}), helpOf({"--help"}));
    EXPECT_EQ(helpOf({"help"}), helpOf({"-h"}));
    EXPECT_EQ(helpOf({"help", "mac"}), helpOf({"mac", "--help"}));
    EXPECT_EQ(helpOf({"help", "mac", "received"}), helpOf({"mac", "received", "-h"}));
    EXPECT_EQ(helpOf({"help", "capture"}), helpOf({"capture", "--help"}));
    EXPECT_EQ(helpOf({"--json", "--state", "a", "help", "capture"}), helpOf({"help", "capture"}));
    EXPECT_EQ(helpOf({"help", "--help"}), helpOf({"help"}));
    EXPECT_EQ(helpOf({"help", "help"}), helpOf({"help"}));
}

TEST(Help, HelpOfAnUnknownCommandIsRefused) {
    EXPECT_EQ(refused({"help", "mac", "recieved"}),
              "'recieved': expected received or advertised after vxshow mac; did you mean "
              "received?");
    EXPECT_EQ(refused({"help", "mac", "received", "now"}),
              "'now': not expected after vxshow mac received");
}

TEST(Help, TheVersionHasAShortOption) {
    EXPECT_EQ(helpOf({"-V"}), "vxshow " VXSHOW_VERSION "\n");
}

TEST(Help, OptionsAreInGroups) {
    std::string const help = helpOf({"--help"});
    EXPECT_NE(help.find(helpCommands), std::string::npos);
    auto const state = help.find("\nState:\n  --state FILE ");
    auto const output = help.find("\nOutput:\n");
    auto const others = help.find("\nOptions:\n  -h,--help     ");
    ASSERT_NE(state, std::string::npos) << help;
    EXPECT_LT(state, output);
    EXPECT_LT(output, others);
    EXPECT_LT(output, help.find("\n  --watch N "));
    EXPECT_LT(help.find("\n  --watch N "), others);
    EXPECT_LT(others, help.find("\n  --trace N "));
    std::string const command = helpOf({"mac", "advertised", "--help"});
    EXPECT_LT(command.find("\nFilters:\n  --vni VNI "), command.find("\n  --dest NAME "));
    EXPECT_LT(command.find("\n  --dest NAME "), command.find("\nOptions:\n  -h,--help  "));
}

TEST(Help, LinesAreAtMost80ColumnsUnlessATerminalSaysOtherwise) {
    for (auto const & words : std::vector<std::vector<std::string>>{
             {"help"}, {"help", "mac", "received"}, {"help", "router", "map"}, {"help", "model"}}) {
        std::istringstream help(helpOf(words));
        for (std::string line; std::getline(help, line);) {
            EXPECT_LE(line.size(), 80U) << line;
        }
    }
}

TEST(Help, LinesAreAsLongAsTheTerminalIsWide) {
    for (unsigned const columns : {50U, 80U, 130U}) {
        std::size_t longest = 0;
        for (std::string const & line : linesOnATerminal({"help", "mac", "received"}, columns)) {
            EXPECT_LE(line.size(), columns) << line;
            longest = std::max(longest, line.size());
        }
        EXPECT_GT(longest, columns - 20U);
    }
}

TEST(Help, AMisspeltCommandIsRefusedWithTheOneThatWasProbablyMeant) {
    EXPECT_EQ(refused({"mac", "recieved"}),
              "'recieved': expected received or advertised after vxshow mac; did you mean "
              "received?");
    std::string const commands =
        "': expected mac or arp or router or state or capture or tables or fabrics or schema or "
        "completion or model after vxshow; did you mean ";
    EXPECT_EQ(refused({"ruoter", "map"}), "'ruoter" + commands + "router?");
    EXPECT_EQ(refused({"mac-received"}), "'mac-received" + commands + "mac received?");
    EXPECT_EQ(refused({"hlep"}), "'hlep" + commands + "help?");
}

TEST(Help, AMisspeltOptionIsRefusedWithTheOneThatWasProbablyMeant) {
    EXPECT_EQ(refused({"mac", "received", "--vin", "10"}),
              "'--vin': not expected here; did you mean --vni?");
    EXPECT_EQ(refused({"mac", "received", "--sorce=leaf1"}),
              "'--sorce=leaf1': not expected here; did you mean --source?");
    EXPECT_EQ(refused({"--jsn", "mac", "received"}),
              "'--jsn': not expected here; did you mean --json?");
    EXPECT_EQ(refused({"arp", "received", "--dest", "hsc"}),
              "'--dest': not expected here; see 'vxshow arp received --help'");
}

TEST(Help, AFilterBeforeItsCommandIsRefusedWithWhereItStands) {
    std::string const line =
        "'--vni': a filter stands after its command: vxshow mac received --vni VNI";
    EXPECT_EQ(refused({"--vni", "10", "mac", "received"}), line);
    EXPECT_EQ(refused({"--vni=10", "mac", "received"}), line);
    EXPECT_EQ(refused({"mac", "--vni", "10", "received"}), line);
    EXPECT_EQ(refused({"--vni", "10"}), line);
    EXPECT_EQ(refused({"--prefix", "10.0.0.0/8", "router", "routes"}),
              "'--prefix': a filter stands after its command: vxshow router routes --prefix "
              "PREFIX");
    EXPECT_EQ(refused({"--force", "capture", "-"}),
              "'--force': this option stands after its command: vxshow capture --force");
}
