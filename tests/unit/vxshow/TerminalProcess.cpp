#include "tests/unit/vxshow/TerminalProcess.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int oneMinute = 600; // in steps of 100 ms
constexpr int step = 100;

[[noreturn]] void execute(std::vector<std::string> const & arguments,
                          TerminalProcess::Setting const & setting) {
    for (char const * const name : {"VXSHOW_STATE", "VXSHOW_FABRIC", "PAGER", "LESS"}) {
        unsetenv(name);
    }
    setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
    setenv("XDG_CACHE_HOME", "/dev/null", 1);
    setenv("VXSHOW_SYSTEM_CONFIG", "", 1);
    setenv("TERM", "xterm", 1);
    setenv("NO_COLOR", "1", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    for (auto const & [name, value] : setting.environment) {
        if (value.empty()) {
            unsetenv(name.c_str());
        } else {
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
    char const * const other = std::getenv("VXSHOW_PROGRAM");
    std::string program = other ? other : VXSHOW_PROGRAM;
    std::vector<std::string> words = arguments;
    std::vector<char *> argv{program.data()};
    for (std::string & word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
}

} // namespace

TerminalProcess::TerminalProcess(std::vector<std::string> const & arguments,
                                 Setting const & setting) {
    winsize const size{setting.lines, setting.columns, 0, 0};
    pid_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (pid_ == 0) {
        execute(arguments, setting);
    }
    if (pid_ < 0) {
        std::abort();
    }
}

TerminalProcess::~TerminalProcess() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(terminal_);
}

void TerminalProcess::type(std::string const & keys) const {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

bool TerminalProcess::readSome(int milliseconds) {
    pollfd fd{terminal_, POLLIN, 0};
    if (poll(&fd, 1, milliseconds) <= 0) {
        return false;
    }
    std::array<char, 4096> some;
    auto const got = read(terminal_, some.data(), some.size());
    drawn_.append(some.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
    return got > 0;
}

std::string const & TerminalProcess::waitFor(std::string const & text) {
    for (int count = 0; drawn_.find(text) == std::string::npos; ++count) {
        if (count == oneMinute) {
            ADD_FAILURE() << "not drawn: " << text << "\ndrawn: " << drawn_;
            break;
        }
        readSome(step);
    }
    return drawn_;
}

int TerminalProcess::finish() {
    for (auto const start = std::chrono::steady_clock::now();
         std::chrono::steady_clock::now() - start < std::chrono::minutes(1);) {
        // A terminal that has hung up is ready at once, although there is nothing to read.
        if (!readSome(step)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(step / 10));
        }
        int status = 0;
        if (waitpid(pid_, &status, WNOHANG) == pid_) {
            pid_ = -1;
            while (readSome(0)) {
            }
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
    }
    ADD_FAILURE() << "still running; drawn: " << drawn_;
    return -1;
}

std::string TerminalProcess::drawn() const {
    std::string text;
    for (char const c : drawn_) {
        if (c != '\r') {
            text += c;
        }
    }
    return text;
}
