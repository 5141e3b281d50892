#include "vxshow/system/Child.h"

#include "vxshow/system/PointersTo.h"
#include "vxshow/system/ProgramPath.h"
#include "vxshow/system/Repeat.h"
#include "vxshow/system/SystemError.h"

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
#include <utility>

namespace vxshow::system {

namespace {

constexpr int firstNonStandard = STDERR_FILENO + 1;

/// Takes ownership of `number`, moved above the standard streams if need be: it can be one of
/// their numbers if this process was started without them, and the child's streams go there.
OwnedDescriptor aboveStandardStreams(int number) {
    OwnedDescriptor first(number);
    if (number < 0) {
        throwSystemError();
    }
    if (number >= firstNonStandard) {
        return first;
    }
    int const higher = ::fcntl(number, F_DUPFD_CLOEXEC, firstNonStandard);
    if (higher < 0) {
        throwSystemError();
    }
    return OwnedDescriptor(higher);
}

struct Pipe {
    OwnedDescriptor reader;
    OwnedDescriptor writer;

    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            throwSystemError();
        }
        OwnedDescriptor second(ends[1]);
        reader = aboveStandardStreams(ends[0]);
        writer = aboveStandardStreams(second.release());
        if (::fcntl(reader.number(), F_SETFL, O_NONBLOCK) != 0) {
            throwSystemError();
        }
    }
};

/// The stack of the child until it executes the program. It has room for a second list of the
/// words, which `execvpe` needs if the program is a script without an interpreter line.
class Stack {
public:
    explicit Stack(std::size_t words)
        : size_((65536 + 16 * words + 4095) / 4096 * 4096),
          start_(::mmap(nullptr, size_, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0)) {
        if (start_ == MAP_FAILED) {
            throwSystemError();
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

/// Blocks all signals, so that no handler of this process runs in the child, which shares its
/// memory.
class AllSignalsBlocked {
public:
    AllSignalsBlocked() noexcept {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }

    AllSignalsBlocked(AllSignalsBlocked const &) = delete;
    AllSignalsBlocked & operator=(AllSignalsBlocked const &) = delete;

    ~AllSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_;
};

/// What the child needs to know, and its answer: the error number, or 0.
struct ChildStart {
    char const * program;
    char ** words;
    int input;
    int output;
    int errors;
    pid_t parent;
    ChildSlot & slot;
    int error;
};

// Uses system calls, because under a sanitizer the C library's functions would record the change
// for this process too.
void restoreDefaultSignals() {
    constexpr int greatestSignal = 64;
    constexpr std::size_t setSize = 8;
    std::array<unsigned long, 4> const defaultAction{};
    std::array<unsigned long, 1> const none{};
    for (int signal = 1; signal <= greatestSignal; ++signal) {
        ::syscall(SYS_rt_sigaction, signal, defaultAction.data(), nullptr, setSize);
    }
    ::syscall(SYS_rt_sigprocmask, SIG_SETMASK, none.data(), nullptr, setSize);
}

// A system call for the same reason. The descriptors differ.
bool redirect(int descriptor, int stream) {
    return repeatInterrupted([&] { return ::syscall(SYS_dup3, descriptor, stream, 0); }) >= 0;
}

bool redirectStreams(ChildStart const & start) {
    bool const done = redirect(start.input, STDIN_FILENO) &&
                      redirect(start.output, STDOUT_FILENO) &&
                      redirect(start.errors, STDERR_FILENO);
    // Descriptors that this process opened are close-on-exec; this closes those it inherited. A
    // kernel without this call leaves them open.
    ::close_range(firstNonStandard, ~0U, 0);
    return done;
}

// Runs in the child, with the memory of this process and a stack that no sanitizer knows. So it
// makes only system calls, and returns rather than calling a function that does not return.
// The attribute in this form is known to both compilers.
__attribute__((no_sanitize("address"), no_sanitize("thread"), no_sanitize("undefined"))) int
runInChild(void * argument) {
    auto & start = *static_cast<ChildStart *>(argument);
    // Without a terminal: a program that would ask there for a password fails at once.
    ::setsid();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The call above has no effect if this process has already ended.
    if (::getppid() != start.parent) {
        return 1;
    }
    if (!redirectStreams(start)) {
        start.error = errno;
        return 1;
    }
    if (!start.slot.enter(::getpid())) {
        start.error = ECANCELED;
        return 1;
    }
    restoreDefaultSignals();
    // The path has a slash, so it is not looked up. Unlike `execve`, this also runs scripts without
    // an interpreter line.
    ::execvpe(start.program, start.words, environ);
    start.error = errno;
    return 1;
}

// ThreadSanitizer takes every clone for a fork and from then on ignores what the thread does, since
// in a child only one thread is left. This child shares the memory, so that would be the thread of
// the parent. The C library's other name of the function is unknown to it.
#ifdef __SANITIZE_THREAD__
extern "C" int __clone(int (*)(void *), void *, int, void *, ...) noexcept; // NOLINT
constexpr auto & cloneFunction = __clone;
#else
constexpr auto & cloneFunction = ::clone;
#endif

/// Sets SIGCHLD to its default if this process was started with it ignored: the system would then
/// reap children itself and discard their exit statuses.
void keepExitStatuses() {
    struct sigaction action {};

    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action = {};
        action.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

/// The file to execute for the name `program`.
std::string pathOf(std::string const & program) {
    auto found = findProgram(program);
    if (!found.path.empty()) {
        return std::move(found.path);
    }
    if (found.refused && found.error == ENOENT) {
        throw RelativeEntryRefused(found.error, std::generic_category());
    }
    throw std::system_error(found.error, std::generic_category());
}

/// Whether this process has the permission to send it a signal.
bool canBeKilled(pid_t pid) {
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
    auto const input = aboveStandardStreams(
        repeatInterrupted([] { return ::open("/dev/null", O_RDONLY | O_CLOEXEC); }));
    auto const program = pathOf(words.front());
    auto copies = words;
    auto pointers = pointersTo(copies);
    ChildStart start{program.c_str(), pointers.data(), input.number(), output,
                     errors,          ::getpid(),      slot_,          0};
    Stack const stack(words.size());
    int ended = -1;
    {
        AllSignalsBlocked const blocked;
        constexpr int flags = CLONE_VM | CLONE_VFORK | CLONE_PIDFD | SIGCHLD;
        pid_ = cloneFunction(runInChild, stack.top(), flags, &start, &ended);
        start.error = pid_ < 0 ? errno : start.error;
    }
    ended_ = OwnedDescriptor(ended);
    if (start.error != 0) {
        end();
        throw std::system_error(start.error, std::generic_category());
    }
}

Child::~Child() {
    end();
}

int Child::end() noexcept {
    if (pid_ < 0) {
        return 0;
    }
    // Until it is reaped, no other process or group can get its number.
    killGroup(pid_);
    slot_.leave();
    if (!canBeKilled(pid_)) {
        closeOutput();
    }
    int status = 0;
    int const wait = canBeKilled(pid_) ? 0 : WNOHANG;
    while (::waitpid(pid_, &status, wait) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    return status;
}

/// The most that can be done about a program of another user, such as sudo starts: once its output
/// is closed, it ends when it prints.
void Child::closeOutput() noexcept {
    constexpr int milliseconds = 100;
    output_.close();
    errors_.close();
    pollfd ended{ended_.number(), POLLIN, 0};
    ::poll(&ended, 1, milliseconds);
}

} // namespace vxshow::system
