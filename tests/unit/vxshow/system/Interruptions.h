#pragma once

#include <atomic>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <thread>

namespace vxshow::test {

inline std::atomic<int> ticks{0};
static_assert(std::atomic<int>::is_always_lock_free);

inline void countTick(int) {
    ++ticks;
}

/// Interrupts blocking calls of the process every 5 ms.
class Interruptions {
public:
    Interruptions() {
        struct sigaction action {};

        action.sa_handler = countTick;
        EXPECT_EQ(sigaction(SIGALRM, &action, &before_), 0);
        itimerval const timer{{0, 5000}, {0, 5000}};
        EXPECT_EQ(setitimer(ITIMER_REAL, &timer, nullptr), 0);
    }

    Interruptions(Interruptions const &) = delete;
    Interruptions & operator=(Interruptions const &) = delete;

    ~Interruptions() {
        itimerval const none{};
        setitimer(ITIMER_REAL, &none, nullptr);
        sigaction(SIGALRM, &before_, nullptr);
    }

    /// Waits until `count` interruptions have happened.
    static void waitFor(int count) {
        while (ticks < count) {
            std::this_thread::yield();
        }
    }

private:
    struct sigaction before_ {};
};

/// Starts `body` on a thread that is not interrupted. Counts interruptions from here on.
template <class Body>
std::thread undisturbed(Body body) {
    ticks = 0;
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    pthread_sigmask(SIG_BLOCK, &alarm, nullptr);
    std::thread thread(body);
    pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
    return thread;
}

} // namespace vxshow::test
