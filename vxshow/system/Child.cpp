#include "vxshow/system/Child.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace vxshow::system {

namespace {

constexpr int firstOther = STDERR_FILENO + 1;

[[noreturn]] void throwError(int error) {
    throw std::system_error(error, std::generic_category());
}

/// Takes `number` over, but not as one of the standard streams: those it would get where this
/// process was started without them, and the child's own are put there.
OwnedDescriptor beyondStandard(int number) {
    OwnedDescriptor first(number);
    if (number < 0) {
        throwError(errno);
    }
    if (number >= firstOther) {
        return first;
    }
    int const higher = ::fcntl(number, F_DUPFD_CLOEXEC, firstOther);
    if (higher < 0) {
        throwError(errno);
    }
    return OwnedDescriptor(higher);
}

struct Pipe {
    OwnedDescriptor reader;
    OwnedDescriptor writer;

    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            throwError(errno);
        }
        OwnedDescriptor second(ends[1]);
        reader = beyondStandard(ends[0]);
        writer = beyondStandard(second.release());
        if (::fcntl(reader.number(), F_SETFL, O_NONBLOCK) != 0) {
            throwError(errno);
        }
    }
};

/// The stack of the child until it is the program. It holds the names that are tried along
/// the PATH, and the words once more where the program is a script that does not name its
/// interpreter.
class Stack {
public:
    explicit Stack(std::size_t words)
        : size_((65536 + 16 * words + 4095) / 4096 * 4096),
          start_(::mmap(nullptr, size_, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0)) {
        if (start_ == MAP_FAILED) {
            throwError(errno);
        }
    }

    Stack(Stack const &) = delete;
    Stack & operator=(Stack const &) = delete;

    ~Stack() { ::munmap(start_, size_); }

    void * top() const noexcept { return static_cast<char *>(start_) + size_; }

private:
    std::size_t size_;
    void * start_;
};

/// No handler of this process runs in the child, which has its memory.
class AllSignalsHeld {
public:
    AllSignalsHeld() noexcept {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }

    AllSignalsHeld(AllSignalsHeld const &) = delete;
    AllSignalsHeld & operator=(AllSignalsHeld const &) = delete;

    ~AllSignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_;
};

/// What the child needs to know, and what it has to say.
struct Start {
    char ** words;
    int input;
    int output;
    int errors;
    pid_t parent;
    ChildSlot & slot;
    int error;
};

// The C library's functions would, under a sanitizer, note the change for this process too.
void signalsAsAtTheStartOfAProgram() {
    constexpr int greatestSignal = 64;
    constexpr std::size_t setSize = 8;
    std::array<unsigned long, 4> const defaultAction{};
    std::array<unsigned long, 1> const none{};
    for (int signal = 1; signal <= greatestSignal; ++signal) {
        ::syscall(SYS_rt_sigaction, signal, defaultAction.data(), nullptr, setSize);
    }
    ::syscall(SYS_rt_sigprocmask, SIG_SETMASK, none.data(), nullptr, setSize);
}

bool streamsInPlace(Start const & start) {
    bool const done = ::dup2(start.input, STDIN_FILENO) >= 0 &&
                      ::dup2(start.output, STDOUT_FILENO) >= 0 &&
                      ::dup2(start.errors, STDERR_FILENO) >= 0;
    // All of ours are closed by the start of the program anyway; these are those that this
    // process has inherited. A system that does not know the call leaves them.
    ::close_range(firstOther, ~0U, 0);
    return done;
}

// The child's side. It has the memory of this process and a stack that no sanitizer knows: it
// calls nothing but the system, and returns instead of calling what never does.
[[gnu::no_sanitize("address"), gnu::no_sanitize("thread"), gnu::no_sanitize("undefined")]] int
become(void * argument) {
    auto & start = *static_cast<Start *>(argument);
    // Without a terminal, so that what wants to ask there for a password fails at once.
    ::setsid();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // That comes too late where this process has gone already.
    if (::getppid() != start.parent) {
        return 1;
    }
    if (!streamsInPlace(start)) {
        start.error = errno;
        return 1;
    }
    if (!start.slot.enter(::getpid())) {
        start.error = ECANCELED;
        return 1;
    }
    signalsAsAtTheStartOfAProgram();
    ::execvpe(start.words[0], start.words, environ);
    start.error = errno;
    return 1;
}

/// Where it is ignored, as this process may have been started, the system reaps children
/// itself, and nobody learns how they have ended.
void keepExitStatuses() {
    struct sigaction action {};

    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action = {};
        action.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

std::vector<char *> pointersTo(std::vector<std::string> & words) {
    std::vector<char *> pointers;
    pointers.reserve(words.size() + 1);
    for (auto & word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Whether a signal would reach it; also when it has ended and is not reaped.
bool mayBeKilled(pid_t pid) {
    return ::kill(pid, 0) == 0 || errno != EPERM;
}

} // namespace

Child::Child(std::vector<std::string> const & words, ChildSlot slot) : slot_(std::move(slot)) {
    keepExitStatuses();
    Pipe output;
    Pipe errors;
    output_ = std::move(output.reader);
    errors_ = std::move(errors.reader);
    start(words, output.writer.number(), errors.writer.number());
}

void Child::start(std::vector<std::string> const & words, int output, int errors) {
    auto const input = beyondStandard(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    auto copies = words;
    auto pointers = pointersTo(copies);
    Start start{pointers.data(), input.number(), output, errors, ::getpid(), slot_, 0};
    Stack const stack(words.size());
    int ended = -1;
    {
        AllSignalsHeld const held;
        constexpr int flags = CLONE_VM | CLONE_VFORK | CLONE_PIDFD | SIGCHLD;
        pid_ = ::clone(become, stack.top(), flags, &start, &ended);
        start.error = pid_ < 0 ? errno : start.error;
    }
    ended_ = OwnedDescriptor(ended);
    if (start.error != 0) {
        end();
        throwError(start.error);
    }
}

Child::~Child() {
    end();
}

int Child::end() noexcept {
    if (pid_ < 0) {
        return 0;
    }
    // While it is not reaped, its number is that of its group and of no other.
    killGroup(pid_);
    slot_.leave();
    if (!mayBeKilled(pid_)) {
        letGo();
    }
    int status = 0;
    int const wait = mayBeKilled(pid_) ? 0 : WNOHANG;
    while (::waitpid(pid_, &status, wait) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    return status;
}

/// For a program of another user, as sudo runs it, the best that can be done is to close its
/// output: what prints ends by that.
void Child::letGo() noexcept {
    constexpr int milliseconds = 100;
    output_ = OwnedDescriptor();
    errors_ = OwnedDescriptor();
    pollfd ended{ended_.number(), POLLIN, 0};
    ::poll(&ended, 1, milliseconds);
}

} // namespace vxshow::system
