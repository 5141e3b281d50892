#pragma once

#include <chrono>
#include <cstddef>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

namespace vxshow::sources::fabric {

/// Threads that read sources. A few of them read at the same time; one that only waits for a source
/// that does not answer does not count, and another one takes its place.
class Readers {
public:
    using Clock = std::chrono::steady_clock;

    /// How long a thread goes without using the processor until it counts as waiting.
    static constexpr std::chrono::milliseconds longestPause{300};

    /// Each thread calls `work` once, which reads one source after the other until none is left.
    /// `atOnce` threads read at the same time; with those that wait there are never more than
    /// `most`. There are fewer if the system gives no more.
    Readers(std::function<void()> work, std::size_t atOnce, std::size_t most);

    /// Waits until every call of `work` has returned.
    ~Readers() = default;

    /// Starts as many threads as are missing. To be called from time to time while sources are
    /// left.
    void fill();

    /// Whether there are any.
    bool any() const noexcept { return !readers_.empty(); }

private:
    struct Reader {
        std::jthread thread;
        clockid_t clock; ///< of the processor time that the thread has used
        std::chrono::nanoseconds used{0};
        Clock::time_point since; ///< when it had last used some
    };

    /// Whether the thread has not used the processor for `longestPause`.
    static bool isWaiting(Reader & reader, Clock::time_point now);
    bool start();

    std::function<void()> work_;
    std::size_t atOnce_;
    std::size_t most_;
    std::vector<Reader> readers_;
};

} // namespace vxshow::sources::fabric
