#include "outfmt/Descriptor.h"

#include "Descriptors.h"
#include "outfmt/WriteError.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <random>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>

namespace outfmt::test {
namespace {

std::string randomBytes(std::size_t size) {
    std::mt19937 engine(7);
    std::string bytes(size, '\0');
    for (char & byte : bytes) {
        byte = static_cast<char>(engine() >> 8);
    }
    return bytes;
}

void writeAll(int fd, std::string_view bytes) {
    Descriptor descriptor(fd);
    while (!bytes.empty()) {
        bytes.remove_prefix(descriptor.writeSome(bytes));
    }
}

/// Writes `bytes` to one end while another thread reads the other in steps of `step`.
std::string passedThrough(Fd & writer, Fd & reader, std::string_view bytes, std::size_t step) {
    std::string received;
    std::thread reading([&] {
        std::string buffer(step, '\0');
        for (ssize_t count = 0; (count = ::read(reader.get(), buffer.data(), step)) > 0;) {
            received.append(buffer, 0, static_cast<std::size_t>(count));
        }
    });
    writeAll(writer.get(), bytes);
    writer.close();
    reading.join();
    return received;
}

TEST(Descriptor, WritesToAFile) {
    File file;
    std::string bytes = randomBytes(10'000'000);
    writeAll(file.fd(), bytes);
    EXPECT_EQ(file.content(), bytes);
}

TEST(Descriptor, WritesTenMegabytesThroughAPipe) {
    Pipe pipe;
    std::string bytes = randomBytes(10'000'000);
    EXPECT_TRUE(passedThrough(pipe.writer, pipe.reader, bytes, 8192) == bytes);
}

TEST(Descriptor, WaitsForTheReaderOfANonBlockingPipe) {
    Pipe pipe;
    ::fcntl(pipe.writer.get(), F_SETFL, O_NONBLOCK);
    std::string bytes = randomBytes(3'000'000);
    EXPECT_TRUE(passedThrough(pipe.writer, pipe.reader, bytes, 1000) == bytes);
}

TEST(Descriptor, CompletesShortWritesToASocket) {
    for (int flags : {0, int{SOCK_NONBLOCK}}) {
        int ends[2];
        ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | flags, 0, ends), 0);
        Fd writer(ends[0]);
        Fd reader(ends[1]);
        ::fcntl(reader.get(), F_SETFL, 0);
        int size = 1; // the kernel raises it to its minimum
        ::setsockopt(writer.get(), SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
        EXPECT_LT(Descriptor(writer.get()).writeSome(std::string(100'000, '.')), 100'000U);
        std::string bytes = randomBytes(1'000'000);
        std::string received = passedThrough(writer, reader, bytes, 700);
        EXPECT_TRUE(received.ends_with(bytes));
    }
}

/// A terminal without a reader: what is written to `slave` is read from `master`.
struct Terminal {
    Terminal() : master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        if (::grantpt(master.get()) != 0 || ::unlockpt(master.get()) != 0) {
            throw std::runtime_error("no pseudo terminal");
        }
        char name[64];
        ::ptsname_r(master.get(), name, sizeof name);
        slave = Fd(::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
    }

    Fd master;
    Fd slave;
};

TEST(Descriptor, WritesToATerminal) {
    Terminal terminal;
    std::string lines;
    std::string shown;
    for (int number = 0; number < 50'000; ++number) {
        lines += std::to_string(number) + " a line of a listing\n";
        shown += std::to_string(number) + " a line of a listing\r\n";
    }
    EXPECT_TRUE(passedThrough(terminal.slave, terminal.master, lines, 5000) == shown);
}

TEST(Descriptor, WritesPiecesThatEndAtLineEndsToATerminal) {
    Terminal terminal;
    Descriptor descriptor(terminal.slave.get());
    std::string parted(6000, 'x');
    parted[3000] = '\n';
    EXPECT_EQ(descriptor.writeSome(parted), 3001U);
    EXPECT_EQ(descriptor.writeSome(std::string(10000, 'z')), 4096U);
}

TEST(Descriptor, NeitherClosesNorChangesTheDescriptor) {
    Pipe pipe;
    int flags = ::fcntl(pipe.writer.get(), F_GETFL);
    writeAll(pipe.writer.get(), "text");
    EXPECT_EQ(::fcntl(pipe.writer.get(), F_GETFL), flags);
}

int codeOfWritingTo(int fd) {
    try {
        writeAll(fd, "text");
    } catch (WriteError const & error) {
        return error.code();
    }
    return 0;
}

TEST(Descriptor, ReportsEveryFailure) {
    Fd full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    EXPECT_EQ(codeOfWritingTo(full.get()), ENOSPC);

    Fd readOnly(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(codeOfWritingTo(readOnly.get()), EBADF);
    EXPECT_EQ(codeOfWritingTo(-1), EBADF);

    SignalAction ignored(SIGPIPE, SIG_IGN);
    Pipe pipe;
    pipe.reader.close();
    EXPECT_EQ(codeOfWritingTo(pipe.writer.get()), EPIPE);
}

TEST(Descriptor, ReportsAReaderThatLeavesWhileItWaits) {
    SignalAction ignored(SIGPIPE, SIG_IGN);
    Pipe pipe;
    fillUp(pipe.writer.get());
    std::thread leaving([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        pipe.reader.close();
    });
    EXPECT_EQ(codeOfWritingTo(pipe.writer.get()), EPIPE);
    leaving.join();
}

TEST(DescriptorDeathTest, LeavesTheBrokenPipeSignalToTheProcess) {
    SignalAction action(SIGPIPE, SIG_DFL);
    EXPECT_EXIT(
        {
            Pipe pipe;
            pipe.reader.close();
            writeAll(pipe.writer.get(), "text");
        },
        testing::KilledBySignal(SIGPIPE), "");
}

using Clock = std::chrono::steady_clock;

/// Writes to `fd`, which is full, while another thread calls `interrupt` a little later;
/// returns how long after that the write ended with the exception. A write that is not
/// interrupted is released by `letGo` after some seconds.
template <class Interrupt, class LetGo>
std::chrono::milliseconds interruptedAfter(int fd, Interrupt interrupt, LetGo letGo) {
    CleanInterruptFlag clean;
    Clock::time_point interrupted;
    std::atomic<bool> back = false;
    std::thread user([&, writer = ::pthread_self()] {
        std::this_thread::sleep_for(std::chrono::milliseconds(120));
        interrupted = Clock::now();
        interrupt(writer);
        while (!back && Clock::now() - interrupted < std::chrono::seconds(5)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        if (!back) {
            letGo();
        }
    });
    EXPECT_THROW(writeAll(fd, std::string(1'000'000, 'x')), SigIntException);
    Clock::time_point returned = Clock::now();
    back = true;
    user.join();
    return std::chrono::duration_cast<std::chrono::milliseconds>(returned - interrupted);
}

constexpr std::chrono::milliseconds promptly(1000);

void onInterrupt(int) {
    requestInterrupt();
}

TEST(DescriptorInterrupt, EndsTheWaitForAPipe) {
    for (int flags : {0, SA_RESTART}) {
        SignalAction action(SIGUSR1, onInterrupt, flags);
        Pipe pipe;
        fillUp(pipe.writer.get());
        EXPECT_LT(interruptedAfter(
                      pipe.writer.get(), [](pthread_t writer) { ::pthread_kill(writer, SIGUSR1); },
                      [&] { pipe.reader.close(); }),
                  promptly);
    }
}

// The effect of a signal that arrives just before write(): no further one ends the wait.
TEST(DescriptorInterrupt, EndsTheWaitEvenIfNoSignalReachesTheWriter) {
    for (int flags : {0, O_NONBLOCK}) {
        Pipe pipe;
        fillUp(pipe.writer.get());
        ::fcntl(pipe.writer.get(), F_SETFL, flags);
        EXPECT_LT(interruptedAfter(
                      pipe.writer.get(), [](pthread_t) { requestInterrupt(); },
                      [&] { pipe.reader.close(); }),
                  promptly);
    }
}

TEST(DescriptorInterrupt, EndsTheWaitForASocket) {
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    Fd writer(ends[0]);
    Fd reader(ends[1]);
    EXPECT_LT(interruptedAfter(
                  writer.get(), [](pthread_t) { requestInterrupt(); }, [&] { reader.close(); }),
              promptly);
}

TEST(DescriptorInterrupt, EndsTheWaitForATerminal) {
    SignalAction action(SIGUSR1, onInterrupt);
    Terminal terminal;
    EXPECT_LT(interruptedAfter(
                  terminal.slave.get(), [](pthread_t writer) { ::pthread_kill(writer, SIGUSR1); },
                  [&] { terminal.master.close(); }),
              promptly);
}

/// Makes this process see an older kernel, which has no non-waiting writes to pipes.
bool takeNonWaitingWritesAway() {
    sock_filter program[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, 0}, // the number of the system call
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, SYS_pwritev2},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EOPNOTSUPP},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
    };
    sock_fprog filter{std::size(program), program};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

void checkPipesOfAnOlderKernel() {
    if (!takeNonWaitingWritesAway()) {
        std::exit(2);
    }
    Pipe whole;
    std::string bytes = randomBytes(3'000'000);
    bool passed = passedThrough(whole.writer, whole.reader, bytes, 1000) == bytes;

    Pipe full;
    fillUp(full.writer.get());
    auto waited = interruptedAfter(
        full.writer.get(), [](pthread_t) { requestInterrupt(); }, [&] { full.reader.close(); });
    std::exit(passed && waited < promptly ? 0 : 1);
}

TEST(DescriptorDeathTest, WorksOnAnOlderKernelToo) {
    EXPECT_EXIT(checkPipesOfAnOlderKernel(), testing::ExitedWithCode(0), "");
}

TEST(DescriptorInterrupt, AnyOtherSignalLeavesTheOutputComplete) {
    CleanInterruptFlag clean;
    SignalAction action(SIGUSR1, [](int) {});
    Pipe pipe;
    std::size_t filled = fillUp(pipe.writer.get());
    std::string bytes = randomBytes(300'000);
    std::string received;
    std::thread user([&, writer = ::pthread_self()] {
        for (int count = 0; count < 20; ++count) {
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
            ::pthread_kill(writer, SIGUSR1);
        }
        received = readAll(pipe.reader.get());
    });
    writeAll(pipe.writer.get(), bytes);
    pipe.writer.close();
    user.join();
    EXPECT_TRUE(received == std::string(filled, '.') + bytes);
}

} // namespace
} // namespace outfmt::test
