#include "vxshow/system/ForegroundProgram.h"

#include "vxshow/system/PointersTo.h"
#include "vxshow/system/SystemError.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vxshow::system {

namespace {

constexpr pid_t none = 0;
constinit std::atomic<pid_t> running{none};
constinit std::atomic<bool> askedToEnd{false};
static_assert(std::atomic<pid_t>::is_always_lock_free);

void check(int error) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category());
    }
}

/// Waits until the program has ended, with the options of `waitpid`; returns whether it has.
bool hasEnded(pid_t program, int options) noexcept {
    for (;;) {
        int status = 0;
        pid_t const ended = ::waitpid(program, &status, options);
        if (ended == program || (ended < 0 && errno != EINTR)) {
            return true;
        }
        if (ended == 0) {
            return false;
        }
    }
}

/// The environment of this process and `more`, which comes first.
std::vector<char *> environmentWith(std::vector<std::string> & more) {
    auto all = pointersTo(more);
    all.pop_back();
    for (char ** one = environ; *one; ++one) {
        all.push_back(*one);
    }
    all.push_back(nullptr);
    return all;
}

class Actions {
public:
    Actions() { check(::posix_spawn_file_actions_init(&actions_)); }

    Actions(Actions const &) = delete;
    Actions & operator=(Actions const &) = delete;

    ~Actions() { ::posix_spawn_file_actions_destroy(&actions_); }

    posix_spawn_file_actions_t * get() noexcept { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

/// Default actions for all signals, none of them blocked.
class Attributes {
public:
    Attributes() {
        check(::posix_spawnattr_init(&attributes_));
        sigset_t signals;
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGXFSZ);
        sigaddset(&signals, SIGPIPE);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    Attributes(Attributes const &) = delete;
    Attributes & operator=(Attributes const &) = delete;

    ~Attributes() { ::posix_spawnattr_destroy(&attributes_); }

    posix_spawnattr_t const * get() const noexcept { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

} // namespace

ForegroundProgram::ForegroundProgram(std::string const & path,
                                     std::vector<std::string> const & words,
                                     std::vector<std::string> const & environment) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throwSystemError();
    }
    OwnedDescriptor const reader(ends[0]);
    input_ = OwnedDescriptor(ends[1]);
    Actions actions;
    check(::posix_spawn_file_actions_adddup2(actions.get(), reader.number(), STDIN_FILENO));
    auto ownWords = words;
    auto ownEnvironment = environment;
    check(::posix_spawn(&pid_, path.c_str(), actions.get(), Attributes().get(),
                        pointersTo(ownWords).data(), environmentWith(ownEnvironment).data()));
    running = pid_;
}

ForegroundProgram::~ForegroundProgram() {
    wait();
}

void ForegroundProgram::wait() noexcept {
    input_.close();
    if (pid_ > 0) {
        hasEnded(std::exchange(pid_, -1), 0);
        running = none;
    }
}

void ForegroundProgram::endRunning() noexcept {
    pid_t const program = running;
    if (program == none) {
        return;
    }
    askedToEnd = true;
    constexpr int attempts = 100;
    timespec const pause{0, 10'000'000};
    ::kill(program, SIGTERM);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (hasEnded(program, WNOHANG)) {
            return;
        }
        ::nanosleep(&pause, nullptr);
    }
    ::kill(program, SIGKILL);
    hasEnded(program, 0);
}

bool ForegroundProgram::wasAskedToEnd() noexcept {
    return askedToEnd;
}

} // namespace vxshow::system
