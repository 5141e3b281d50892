#include "tests/faults/Supervisor.h"

#include "tests/faults/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <elf.h>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace faults {

namespace {

constexpr int systemCallStop = SIGTRAP | 0x80;
constexpr unsigned long breakpoint = 0xCC; // int3
constexpr unsigned long lowestByte = 0xFF;

volatile std::sig_atomic_t timeIsOver = 0;

extern "C" void endTime(int) {
    timeIsOver = 1;
}

void require(bool done, char const * what) {
    if (!done) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

long trace(int request, pid_t thread, unsigned long address, unsigned long data) {
    errno = 0;
    return ::ptrace(static_cast<__ptrace_request>(request), thread, address, data);
}

std::string contentOf(std::string const & path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Where the program itself starts, after the dynamic loader.
unsigned long entryPoint(pid_t process) {
    auto const vector = contentOf("/proc/" + std::to_string(process) + "/auxv");
    auto const * const entries = reinterpret_cast<Elf64_auxv_t const *>(vector.data());
    for (std::size_t index = 0; index < vector.size() / sizeof(Elf64_auxv_t); ++index) {
        if (entries[index].a_type == AT_ENTRY) {
            return entries[index].a_un.a_val;
        }
    }
    throw std::runtime_error("the program has no entry point");
}

/// The command lines of the children of this process that have not ended.
std::vector<std::string> runningChildren() {
    std::vector<std::string> lines;
    auto const own = std::to_string(::getpid());
    std::ifstream children("/proc/self/task/" + own + "/children");
    for (std::string process; children >> process;) {
        auto line = contentOf("/proc/" + process + "/cmdline");
        for (char & byte : line) {
            byte = byte == '\0' ? ' ' : byte;
        }
        if (!line.empty()) { // empty: a zombie
            lines.push_back(process + " " + line);
        }
    }
    return lines;
}

/// Also lets those go on that were stopped when the program ended.
void reapEnded() {
    int status = 0;
    for (pid_t child; (child = ::waitpid(-1, &status, WNOHANG | __WALL)) > 0;) {
        if (WIFSTOPPED(status)) {
            trace(PTRACE_DETACH, child, 0, 0);
        }
    }
}

class Supervisor {
public:
    Supervisor(Plan const & plan, pid_t program) : faults_(plan), program_(program) {}

    Ending run() {
        while (!ended_) {
            int status = 0;
            pid_t const thread = ::waitpid(-1, &status, __WALL);
            if (timeIsOver) {
                ending_.kind = Ending::Kind::hung;
                ::kill(program_, SIGKILL);
                ::waitpid(program_, nullptr, __WALL);
                break;
            }
            if (thread >= 0) {
                take(thread, status);
            } else {
                require(errno == EINTR, "waitpid");
            }
        }
        ending_.disturbed = faults_.count();
        return std::move(ending_);
    }

private:
    void take(pid_t thread, int status) {
        if (WIFSTOPPED(status)) {
            stopped(thread, status);
        } else if (thread == program_) {
            bool const exited = WIFEXITED(status);
            ending_.kind = exited ? Ending::Kind::exited : Ending::Kind::killed;
            ending_.number = exited ? WEXITSTATUS(status) : WTERMSIG(status);
            ended_ = true;
        }
    }

    void stopped(pid_t thread, int status) {
        int const signal = WSTOPSIG(status);
        int const event = status >> 16;
        if (event == PTRACE_EVENT_EXEC) {
            executed(thread);
        } else if (event != 0 || known_.insert(thread).second) {
            goOn(thread, 0); // a thread or a child starts with a stop
        } else if (signal == systemCallStop) {
            systemCall(thread);
        } else if (signal == SIGTRAP && atEntry(thread)) {
            started_ = true;
            goOn(thread, 0);
        } else {
            goOn(thread, signal);
        }
    }

    /// A child that executes another program is of no interest any more.
    void executed(pid_t thread) {
        if (thread != program_ || started_) {
            known_.erase(thread);
            trace(PTRACE_DETACH, thread, 0, 0);
            return;
        }
        known_.insert(thread);
        entry_ = entryPoint(thread);
        instruction_ = static_cast<unsigned long>(trace(PTRACE_PEEKTEXT, thread, entry_, 0));
        trace(PTRACE_POKETEXT, thread, entry_, (instruction_ & ~lowestByte) | breakpoint);
        goOn(thread, 0);
    }

    /// Whether the program has reached its entry point; if so, the breakpoint goes.
    bool atEntry(pid_t thread) {
        user_regs_struct registers = registersOf(thread);
        if (started_ || registers.rip != entry_ + 1) {
            return false;
        }
        trace(PTRACE_POKETEXT, thread, entry_, instruction_);
        registers.rip = entry_;
        setRegisters(thread, registers);
        return true;
    }

    void systemCall(pid_t thread) {
        __ptrace_syscall_info info{};
        trace(PTRACE_GET_SYSCALL_INFO, thread, sizeof(info),
              reinterpret_cast<unsigned long>(&info));
        if (!started_) {
            trace(PTRACE_CONT, thread, 0, 0);
            return;
        }
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
            begins(thread, info);
        } else if (info.op == PTRACE_SYSCALL_INFO_EXIT) {
            ends(thread);
        }
        goOn(thread, 0);
    }

    void begins(pid_t thread, __ptrace_syscall_info const & info) {
        auto const number = static_cast<long>(info.entry.nr);
        auto const first = static_cast<int>(info.entry.args[0]);
        auto const name = systemCallName(number, static_cast<int>(info.entry.args[1]));
        bool const opens = number == SYS_openat;
        bool const unnamed = opens && (info.entry.args[2] & O_TMPFILE) == O_TMPFILE;
        ending_.calls.push_back({name, first});
        auto const before = faults_.count();
        auto const verdict = faults_.next(thread, name, unnamed);
        if (faults_.count() != before) {
            ending_.first = first;
        }
        if (verdict.error == 0 && verdict.most == 0) {
            return;
        }
        user_regs_struct registers = registersOf(thread);
        Open & open = open_[thread] = {verdict.error, registers, {}};
        if (verdict.error != 0 && number == SYS_brk) {
            // It has no error number: it returns the end as it was.
            registers.rdi = 0;
            open.error = 0;
        } else if (verdict.error != 0 && number != SYS_close) {
            // A descriptor is closed even if that fails.
            registers.orig_rax = ~0ULL;
        } else if (number == SYS_pwritev2) {
            open.piece = shorten(thread, firstLength(registers), verdict.most);
        } else if (verdict.most != 0 && registers.rdx > verdict.most) {
            registers.rdx = verdict.most;
        } else {
            return;
        }
        setRegisters(thread, registers);
    }

    /// Where the length of the first piece of a `pwritev2` is.
    static unsigned long firstLength(user_regs_struct const & registers) {
        return registers.rsi + offsetof(iovec, iov_len);
    }

    /// Lowers the number at `address` to `most`; returns what it was.
    static unsigned long shorten(pid_t thread, unsigned long address, unsigned long most) {
        auto const before = static_cast<unsigned long>(trace(PTRACE_PEEKDATA, thread, address, 0));
        trace(PTRACE_POKEDATA, thread, address, std::min(before, most));
        return before;
    }

    void ends(pid_t thread) {
        auto const found = open_.find(thread);
        if (found == open_.end()) {
            return;
        }
        Open const open = found->second;
        open_.erase(found);
        user_regs_struct registers = registersOf(thread);
        // The C library relies on the arguments being left alone.
        registers.rdi = open.before.rdi;
        registers.rdx = open.before.rdx;
        if (open.piece) {
            trace(PTRACE_POKEDATA, thread, firstLength(open.before), *open.piece);
        }
        if (open.error != 0) {
            registers.rax = static_cast<unsigned long long>(-static_cast<long long>(open.error));
        }
        setRegisters(thread, registers);
    }

    /// Before the entry point, only that one is waited for.
    void goOn(pid_t thread, int signal) {
        trace(started_ ? PTRACE_SYSCALL : PTRACE_CONT, thread, 0,
              static_cast<unsigned long>(signal));
    }

    static user_regs_struct registersOf(pid_t thread) {
        user_regs_struct registers{};
        trace(PTRACE_GETREGS, thread, 0, reinterpret_cast<unsigned long>(&registers));
        return registers;
    }

    static void setRegisters(pid_t thread, user_regs_struct const & registers) {
        trace(PTRACE_SETREGS, thread, 0, reinterpret_cast<unsigned long>(&registers));
    }

    /// A call that has started.
    struct Open {
        int error;               ///< what it is to return; 0 for what the system says
        user_regs_struct before; ///< as the program made it
        std::optional<unsigned long> piece = {}; ///< the length of its first piece, if shortened
    };

    Faults faults_;
    pid_t program_;
    bool started_ = false;
    bool ended_ = false;
    unsigned long entry_ = 0;
    unsigned long instruction_ = 0; ///< what the breakpoint replaced
    std::set<pid_t> known_;
    std::map<pid_t, Open> open_;
    Ending ending_;
};

pid_t startTraced(std::vector<std::string> const & words,
                  std::vector<std::string> const & variables) {
    std::vector<char *> pointers;
    for (auto const & word : words) {
        pointers.push_back(const_cast<char *>(word.c_str()));
    }
    pointers.push_back(nullptr);
    pid_t const program = ::fork();
    require(program >= 0, "fork");
    if (program == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        for (auto const & variable : variables) {
            ::putenv(const_cast<char *>(variable.c_str()));
        }
        ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }
    int status = 0;
    require(::waitpid(program, &status, __WALL) == program, "waitpid");
    constexpr unsigned long options = PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD |
                                      PTRACE_O_TRACECLONE | PTRACE_O_TRACEFORK |
                                      PTRACE_O_TRACEVFORK | PTRACE_O_TRACEEXEC;
    require(trace(PTRACE_SETOPTIONS, program, 0, options) == 0, "PTRACE_SETOPTIONS");
    trace(PTRACE_CONT, program, 0, 0);
    return program;
}

void setTimeLimit(unsigned seconds) {
    struct sigaction action {};

    action.sa_handler = endTime; // without SA_RESTART, so that it ends the wait
    ::sigaction(SIGALRM, &action, nullptr);
    ::alarm(seconds);
}

/// Kills what the program has left. A process that was killed may take a moment to end.
std::vector<std::string> killSurvivors() {
    using namespace std::chrono_literals;
    constexpr auto grace = 10s;
    auto const end = std::chrono::steady_clock::now() + grace;
    reapEnded();
    auto survivors = runningChildren();
    while (!survivors.empty() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(1ms);
        reapEnded();
        survivors = runningChildren();
    }
    for (auto left = survivors; !left.empty(); left = runningChildren()) {
        for (auto const & survivor : left) {
            ::kill(std::stoi(survivor), SIGKILL);
        }
        std::this_thread::sleep_for(1ms);
        reapEnded();
    }
    return survivors;
}

} // namespace

Ending supervise(std::vector<std::string> const & words, std::vector<std::string> const & variables,
                 Plan const & plan, unsigned seconds) {
    require(::prctl(PR_SET_CHILD_SUBREAPER, 1) == 0, "prctl");
    setTimeLimit(seconds);
    auto ending = Supervisor(plan, startTraced(words, variables)).run();
    ending.survivors = killSurvivors();
    return ending;
}

} // namespace faults
