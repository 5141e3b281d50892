#include "vxshow/system/Run.h"

#include "vxshow/system/Child.h"
#include "vxshow/system/GrowingBytes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <limits>
#include <mutex>
#include <optional>
#include <poll.h>
#include <shared_mutex>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vxshow::system {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t longestErrors = 4096;
constexpr auto quietAfterTheEnd = 200ms;

/// For how long to `poll`: never less than until `moment`.
int millisecondsUntil(Clock::time_point moment) {
    auto const left = moment - Clock::now();
    if (left <= Clock::duration::zero()) {
        return 0;
    }
    auto const whole = std::chrono::duration_cast<std::chrono::milliseconds>(left).count();
    return static_cast<int>(std::min<decltype(whole)>(whole, std::numeric_limits<int>::max() - 1)) +
           1;
}

/// Reads into `to`, and says how many bytes have come: none at the end, nothing when there
/// are none yet.
std::optional<std::size_t> readAvailable(int descriptor, char * to, std::size_t room) {
    auto const got = ::read(descriptor, to, room);
    if (got >= 0) {
        return static_cast<std::size_t>(got);
    }
    if (errno != EINTR && errno != EAGAIN) {
        throw std::system_error(errno, std::generic_category());
    }
    return std::nullopt;
}

/// Keeps the end of what it is given: there stands why a program has ended.
class End {
public:
    explicit End(std::size_t longest) : longest_(longest) {}

    void add(std::string_view piece) {
        text_.append(piece);
        if (text_.size() > 2 * longest_) {
            text_.erase(0, text_.size() - longest_ - 1);
        }
    }

    /// Whole lines, unless the last alone is too long.
    std::string take() {
        if (text_.size() > longest_) {
            auto const cut = text_.size() - longest_;
            auto const lineEnd = text_.find('\n', cut - 1);
            text_.erase(0, lineEnd + 1 < text_.size() ? lineEnd + 1 : cut);
        }
        return std::move(text_);
    }

private:
    std::size_t longest_;
    std::string text_;
};

/// One program, listened to until it is at its end.
class Listener {
public:
    Listener(Child & child, Limits const & limits,
             std::function<void(std::string_view)> const & received)
        : child_(child), limits_(limits), received_(received),
          output_(limits.outputBytes), polled_{{{child.output(), POLLIN, 0},
                                                {child.errors(), POLLIN, 0},
                                                {child.ended(), POLLIN, 0}}} {}

    Answer answer() {
        while (!isAtItsEnd()) {
            if (!isAnyReady(millisecondsUntil(waitEnd()))) {
                if (quietEnd_ && Clock::now() >= *quietEnd_) {
                    break;
                }
            }
            takeWhatIsReady();
            if (output_.isTooLong()) {
                return OutputLimit{std::min(limits_.outputBytes, FileBytes::longest)};
            }
            if (!isAtItsEnd() && Clock::now() >= limits_.end) {
                return TimeLimit{};
            }
        }
        return answerAtItsEnd();
    }

private:
    enum Polled { output, errors, end };

    bool isOpen(Polled what) const { return polled_[what].fd >= 0; }

    bool isReady(Polled what) const { return isOpen(what) && polled_[what].revents != 0; }

    bool isAtItsEnd() const { return !isOpen(output) && !isOpen(errors) && !isOpen(end); }

    Clock::time_point waitEnd() const {
        return quietEnd_ ? std::min(*quietEnd_, limits_.end) : limits_.end;
    }

    bool isAnyReady(int milliseconds) {
        int const ready = ::poll(polled_.data(), polled_.size(), milliseconds);
        if (ready < 0) {
            for (auto & one : polled_) {
                one.revents = 0;
            }
        }
        return ready != 0;
    }

    void takeWhatIsReady() {
        if (isReady(end)) {
            polled_[end].fd = -1;
            quietEnd_ = Clock::now() + quietAfterTheEnd;
        }
        if (isReady(output)) {
            readOutput();
        }
        if (isReady(errors)) {
            readErrors();
        }
    }

    void hasCome(Polled what, std::optional<std::size_t> bytes) {
        if (bytes == 0) {
            polled_[what].fd = -1;
        } else if (bytes && quietEnd_) {
            quietEnd_ = Clock::now() + quietAfterTheEnd;
        }
    }

    void readOutput() {
        auto const room = output_.room();
        auto const bytes = readAvailable(child_.output(), room.data(), room.size());
        hasCome(output, bytes);
        if (!bytes || *bytes == 0) {
            return;
        }
        output_.add(*bytes);
        if (received_ && !output_.isTooLong()) {
            received_({room.data(), *bytes});
        }
    }

    void readErrors() {
        std::array<char, longestErrors> some;
        auto const bytes = readAvailable(child_.errors(), some.data(), some.size());
        hasCome(errors, bytes);
        errorText_.add({some.data(), bytes.value_or(0)});
    }

    Answer answerAtItsEnd() {
        int const status = child_.end();
        if (!WIFSIGNALED(status)) {
            return Exited{WEXITSTATUS(status), output_.take(), errorText_.take()};
        }
        int const signal = WTERMSIG(status);
        if (signal == SIGKILL && ChildSlot::allKilled()) {
            return Interrupted{};
        }
        return Killed{signal, errorText_.take()};
    }

    Child & child_;
    Limits const & limits_;
    std::function<void(std::string_view)> const & received_;
    GrowingBytes output_;
    End errorText_{longestErrors};
    std::optional<Clock::time_point> quietEnd_; ///< there once the program itself has ended
    std::array<pollfd, 3> polled_;
};

bool canBeWords(std::vector<std::string> const & words) {
    auto const hasZero = [](std::string const & word) {
        return word.find('\0') != std::string::npos;
    };
    return !words.empty() && std::none_of(words.begin(), words.end(), hasZero);
}

/// The start of a program, which takes a free slot, descriptors and a process of the system.
/// Where others have them all, it waits until they give some back.
class StartAttempt {
public:
    StartAttempt(std::optional<Child> & child, std::vector<std::string> const & words)
        : child_(child), words_(words) {}

    /// Nothing when it runs.
    std::optional<Answer> before(Clock::time_point end) {
        while (Clock::now() < end && !ChildSlot::allKilled()) {
            bool const waits = error_ == 0 ? tryBesideOthers() : tryAlone();
            if (!waits) {
                return child_ ? std::nullopt : std::optional(notStarted());
            }
            std::this_thread::sleep_for(1ms);
        }
        return ChildSlot::allKilled() ? Interrupted{} : notStarted();
    }

private:
    // Two that start at once may each take what the other needs. So one that has failed tries
    // again while no other starts: then it lacks only what those that run have.
    inline static std::shared_mutex starts;

    /// Whether there is something to wait for.
    bool tryBesideOthers() {
        std::shared_lock const others(starts);
        return !tryOnce();
    }

    bool tryAlone() {
        std::unique_lock const alone(starts);
        return !tryOnce() && ChildSlot::anyTaken();
    }

    /// Whether that is its end: it runs, or nothing that others do can help.
    bool tryOnce() {
        auto slot = ChildSlot::take();
        if (!slot) {
            return false;
        }
        try {
            child_.emplace(words_, *std::move(slot));
            return true;
        } catch (std::system_error const & error) {
            error_ = error.code().value();
        }
        return error_ != EMFILE && error_ != ENFILE && error_ != EAGAIN;
    }

    Answer notStarted() const {
        switch (error_) {
        case 0:
            return TimeLimit{};
        case ECANCELED:
            return Interrupted{};
        default:
            return NotRun{error_};
        }
    }

    std::optional<Child> & child_;
    std::vector<std::string> const & words_;
    int error_ = 0; ///< why the system has not started it
};

} // namespace

Answer run(std::vector<std::string> const & words, Limits const & limits,
           std::function<void(std::string_view)> const & received) {
    if (!canBeWords(words)) {
        return NotRun{EINVAL};
    }
    std::optional<Child> child;
    if (auto answer = StartAttempt(child, words).before(limits.end)) {
        return *std::move(answer);
    }
    return Listener(*child, limits, received).answer();
}

} // namespace vxshow::system
