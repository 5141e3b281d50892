#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

std::vector<std::string> listingOf(TemporaryFile const & state) {
    return {"--state", state.path(), "mac", "received"};
}

/// Whether the process has a handler for the signal.
bool handles(pid_t pid, int signal) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/status");
    std::string word;
    while (file >> word && word != "SigCgt:") {
    }
    unsigned long long caught = 0;
    file >> std::hex >> caught;
    return (caught >> (signal - 1) & 1) != 0;
}

/// Sends the signal to a vxshow that is reading its state; returns the signal that ended it.
int signalWhileReading(int signal) {
    auto const leaveNoCore = [] {
        rlimit const none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
    };
    // Nothing ever arrives on standard input.
    Process process({"--state", "-", "mac", "received"}, {.inChild = leaveNoCore});
    auto const end = std::chrono::steady_clock::now() + 30s;
    while (!handles(process.pid(), signal)) {
        if (std::chrono::steady_clock::now() > end) {
            ADD_FAILURE() << "no handler of signal " << signal;
            break;
        }
        std::this_thread::sleep_for(2ms);
    }
    process.signal(signal);
    return process.finish().signal;
}

} // namespace

TEST(Exit, AnUnreadableStateIsOneLineAndStatus1) {
    Finished const finished = runVxshow({"--state", "/nonexistent/state.json", "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "vxshow: /nonexistent/state.json: No such file or directory\n");
}

TEST(Exit, ABrokenStateIsOneLineAndPrintsNothing) {
    std::string const whole = smallSnapshot();
    TemporaryFile const state(whole.substr(0, whole.size() - 1));
    Finished const finished = runVxshow(listingOf(state));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err.substr(0, 8 + state.path().size()), "vxshow: " + state.path());
    EXPECT_EQ(finished.err.find('\n'), finished.err.size() - 1) << finished.err;
}

TEST(Exit, AFullDiskIsOneLineAndStatus1) {
    TemporaryFile const state(smallSnapshot());
    int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    Finished const finished = runVxshow(listingOf(state), {.outFd = full});
    close(full);
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.err.find("vxshow: mac received: "), std::string::npos) << finished.err;
    EXPECT_NE(finished.err.find("No space left on device"), std::string::npos) << finished.err;
    EXPECT_EQ(finished.err.find('\n'), finished.err.size() - 1) << finished.err;
}

TEST(Exit, AClosedStandardOutputIsOneLineAndStatus1) {
    TemporaryFile const state(smallSnapshot());
    Finished const finished = runVxshow(listingOf(state), {.closeOutput = true});
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.err.find("Bad file descriptor"), std::string::npos) << finished.err;
}

TEST(Exit, AnOutputBeyondTheFileSizeLimitIsOneLineAndStatus1) {
    TemporaryFile const state(largeSnapshot(20'000));
    TemporaryFile const output("");
    int const file = open(output.path().c_str(), O_WRONLY | O_CLOEXEC);
    auto const limited = [] {
        rlimit const limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    Finished const finished = runVxshow(listingOf(state), {.outFd = file, .inChild = limited});
    close(file);
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.err.find("File too large"), std::string::npos) << finished.err;
}

TEST(Exit, AClosedPipeEndsTheProgramSilently) {
    TemporaryFile const state(largeSnapshot(50'000));
    Process process(listingOf(state));
    process.readSome(100);
    process.closeReader();
    Finished const finished = process.finish();
    EXPECT_EQ(finished.signal, SIGPIPE);
    EXPECT_EQ(finished.err, "");
}

TEST(Exit, AClosedPipeIsOneLineIfTheSignalIsIgnored) {
    TemporaryFile const state(largeSnapshot(50'000));
    Process process(listingOf(state), {.ignoreSigpipe = true});
    process.readSome(100);
    process.closeReader();
    Finished const finished = process.finish();
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.err.find("Broken pipe"), std::string::npos) << finished.err;
}

TEST(Exit, AnInterruptWhileReadingSaysSoAndIsStatus130) {
    // It waits for standard input, on which nothing ever arrives.
    Process process({"--state", "-", "mac", "received"});
    std::this_thread::sleep_for(500ms);
    process.signal(SIGINT);
    auto const start = std::chrono::steady_clock::now();
    Finished const finished = process.finish();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.out, "exiting on interrupt\n");
    EXPECT_EQ(finished.err, "");
}

TEST(Exit, ATerminatingSignalIsHandledAndStillSeenByTheParent) {
    for (int const signal : {SIGHUP, SIGQUIT, SIGTERM}) {
        EXPECT_EQ(signalWhileReading(signal), signal);
    }
}

/// The output of `arguments`, interrupted while it is being printed. The test fails unless that
/// ends the program as an interrupt does.
static std::string interruptedOutputOf(std::vector<std::string> const & arguments) {
    Process process(arguments);
    std::string out = process.readSome(1000);
    process.signal(SIGINT);
    Finished const finished = process.finish();
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.err, "");
    return out + finished.out;
}

TEST(Exit, AnInterruptWhilePrintingEndsTheListingAtALineEnd) {
    TemporaryFile const state(largeSnapshot(200'000));
    auto const out = interruptedOutputOf(listingOf(state));
    EXPECT_LT(out.size(), 200'000U * 70);
    ASSERT_GE(out.size(), 22U);
    EXPECT_EQ(out.substr(out.size() - 22), "\nexiting on interrupt\n");
}

TEST(Exit, AnInterruptWhilePrintingJsonEndsItAtALineEnd) {
    TemporaryFile const state(largeSnapshot(200'000));
    for (auto const & words : std::vector<std::vector<std::string>>{
             {"--json", "mac", "received"}, {"--pretty", "mac", "received"}, {"capture", "-"}}) {
        std::vector<std::string> arguments{"--state", state.path()};
        arguments.insert(arguments.end(), words.begin(), words.end());
        auto const out = interruptedOutputOf(arguments);
        ASSERT_GE(out.size(), 22U);
        EXPECT_EQ(out.substr(out.size() - 22), "\nexiting on interrupt\n") << words.front();
    }
}

TEST(Exit, AnInterruptedJsonEndsAtALineEndOnATerminal) {
    int const master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_TRUE(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
    char name[64];
    ASSERT_EQ(ptsname_r(master, name, sizeof(name)), 0);
    int const terminal = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(terminal, 0);
    TemporaryFile const state(largeSnapshot(200'000));
    Process process({"--state", state.path(), "--json", "mac", "received"}, {.outFd = terminal});
    close(terminal);
    std::string out;
    char piece[4096];
    for (ssize_t got = read(master, piece, sizeof(piece)); got > 0;
         got = read(master, piece, sizeof(piece))) {
        if (out.empty()) {
            process.signal(SIGINT);
        }
        out.append(piece, static_cast<std::size_t>(got));
    }
    EXPECT_EQ(process.finish().status, 130);
    close(master);
    ASSERT_GE(out.size(), 24U);
    EXPECT_EQ(out.substr(out.size() - 24), "\r\nexiting on interrupt\r\n");
}

TEST(Exit, AnInterruptLeavesWholeLinesToAReaderThatStoppedWithinOne) {
    TemporaryFile const state(largeSnapshot(200'000));
    Process process(listingOf(state));
    std::string out = process.readSome(5000); // not a whole number of rows, nor of pages
    std::this_thread::sleep_for(200ms);       // the pipe fills up again
    process.signal(SIGINT);
    Finished const finished = process.finish();
    out += finished.out;
    EXPECT_EQ(finished.status, 130);
    ASSERT_GE(out.size(), 22U);
    EXPECT_EQ(out.substr(out.size() - 22), "\nexiting on interrupt\n");
}

TEST(Exit, AnInterruptEndsTheProgramOnABlockedTerminal) {
    int const master = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
    char name[64];
    ASSERT_EQ(ptsname_r(master, name, sizeof(name)), 0);
    int const terminal = open(name, O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    TemporaryFile const state(largeSnapshot(50'000));
    {
        Process process(listingOf(state), {.outFd = terminal});
        std::this_thread::sleep_for(1500ms); // nobody reads: the terminal is full
        process.signal(SIGINT);
        auto const start = std::chrono::steady_clock::now();
        EXPECT_EQ(process.finish().status, 130);
        EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    }
    close(terminal);
    close(master);
}

TEST(Exit, AnInterruptEndsTheProgramEvenIfNothingIsRead) {
    TemporaryFile const state(largeSnapshot(200'000));
    Process process(listingOf(state));
    process.readSome(1); // printing has begun; the pipe is full soon after
    std::this_thread::sleep_for(500ms);
    process.signal(SIGINT);
    int status = 0;
    auto const start = std::chrono::steady_clock::now();
    pid_t ended = 0;
    while (ended == 0 && std::chrono::steady_clock::now() - start < 5s) {
        std::this_thread::sleep_for(5ms);
        siginfo_t info{};
        ended =
            waitid(P_PID, static_cast<id_t>(process.pid()), &info, WEXITED | WNOHANG | WNOWAIT) == 0
                ? info.si_pid
                : -1;
        status = info.si_status;
    }
    EXPECT_EQ(ended, process.pid());
    EXPECT_EQ(status, 130);
}

TEST(Exit, TraceRecordsGoToStandardError) {
    TemporaryFile const state(smallSnapshot());
    Finished const quiet = runVxshow(listingOf(state));
    auto arguments = listingOf(state);
    arguments.insert(arguments.end(), {"--source", "hsc", "--trace", "8"});
    Finished const finished = runVxshow(arguments);
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.err.find("void VxlanController::Cli::VcsVniReceived::initialize()\n"),
              std::string::npos)
        << finished.err;
    EXPECT_EQ(quiet.err, "");
    EXPECT_EQ(finished.err.substr(0, 2), "8 ");
}
