#include "vxshow/system/Run.h"

#include "vxshow/system/Child.h"
#include "vxshow/system/DescriptorIo.h"
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
#include <span>
#include <sys/wait.h>
#include <system_error>
#include <thread>

namespace vxshow::system {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t maxErrorText = 4096;
constexpr auto quietTimeAfterEnd = 200ms;

/// The timeout for `poll` to wait until `moment`, rounded up.
int millisecondsUntil(Clock::time_point moment) {
    auto const left = moment - Clock::now();
    if (left <= Clock::duration::zero()) {
        return 0;
    }
    auto const whole = std::chrono::duration_cast<std::chrono::milliseconds>(left).count();
    return static_cast<int>(std::min<decltype(whole)>(whole, std::numeric_limits<int>::max() - 1)) +
           1;
}

/// Reads what has arrived and returns the number of bytes: 0 at the end of the output, nullopt if
/// nothing has arrived yet.
std::optional<std::size_t> readAvailable(int descriptor, std::span<char> room) {
    auto const [bytes, error] = readSome(descriptor, room);
    if (error == std::errc::resource_unavailable_try_again) {
        return std::nullopt;
    }
    if (error) {
        throw std::system_error(error);
    }
    return bytes;
}

/// Keeps the end of a text: the last words of a program say why it has ended.
class TextEnd {
public:
    explicit TextEnd(std::size_t longest) : longest_(longest) {}

    void add(std::string_view piece) {
        text_.append(piece);
        if (text_.size() > 2 * longest_) {
            text_.erase(0, text_.size() - longest_ - 1);
        }
    }

    /// Only whole lines, unless the last line alone is too long.
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

/// Collects the output of one program until it has finished.
class OutputCollector {
public:
    OutputCollector(Child & child, Limits const & limits,
                    std::function<void(std::string_view)> const & received)
        : child_(child), limits_(limits), received_(received),
          output_(limits.outputBytes), polled_{{{child.output(), POLLIN, 0},
                                                {child.errors(), POLLIN, 0},
                                                {child.ended(), POLLIN, 0}}} {}

    RunResult collect() {
        while (!hasFinished()) {
            if (!isAnyReady(millisecondsUntil(waitEnd()))) {
                if (quietEnd_ && Clock::now() >= *quietEnd_) {
                    break;
                }
            }
            readWhatIsReady();
            if (output_.isTooLong()) {
                return OutputLimitReached{std::min(limits_.outputBytes, FileBytes::longest)};
            }
            if (!hasFinished() && Clock::now() >= limits_.end) {
                return TimeLimitReached{};
            }
        }
        return finish();
    }

private:
    enum Polled { output, errors, end };

    bool isOpen(Polled what) const { return polled_[what].fd >= 0; }

    bool isReady(Polled what) const { return isOpen(what) && polled_[what].revents != 0; }

    bool hasFinished() const { return !isOpen(output) && !isOpen(errors) && !isOpen(end); }

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

    void readWhatIsReady() {
        if (isReady(end)) {
            polled_[end].fd = -1;
            quietEnd_ = Clock::now() + quietTimeAfterEnd;
        }
        if (isReady(output)) {
            readOutput();
        }
        if (isReady(errors)) {
            readErrors();
        }
    }

    void trackArrival(Polled what, std::optional<std::size_t> bytes) {
        if (bytes == 0) {
            polled_[what].fd = -1;
        } else if (bytes && quietEnd_) {
            quietEnd_ = Clock::now() + quietTimeAfterEnd;
        }
    }

    void readOutput() {
        auto const room = output_.room();
        auto const bytes = readAvailable(child_.output(), room);
        trackArrival(output, bytes);
        if (!bytes || *bytes == 0) {
            return;
        }
        output_.add(*bytes);
        if (received_ && !output_.isTooLong()) {
            received_({room.data(), *bytes});
        }
    }

    void readErrors() {
        std::array<char, maxErrorText> piece;
        auto const bytes = readAvailable(child_.errors(), piece);
        trackArrival(errors, bytes);
        errorText_.add({piece.data(), bytes.value_or(0)});
    }

    RunResult finish() {
        int const status = child_.end();
        if (!WIFSIGNALED(status)) {
            return Exited{WEXITSTATUS(status), output_.take(), errorText_.take()};
        }
        int const signal = WTERMSIG(status);
        if (signal == SIGKILL && ChildSlot::allKilled()) {
            return Interrupted{};
        }
        return KilledBySignal{signal, errorText_.take()};
    }

    Child & child_;
    Limits const & limits_;
    std::function<void(std::string_view)> const & received_;
    GrowingBytes output_;
    TextEnd errorText_{maxErrorText};
    std::optional<Clock::time_point> quietEnd_; ///< set once the program itself has ended
    std::array<pollfd, 3> polled_;
};

bool areValidWords(std::vector<std::string> const & words) {
    auto const hasZero = [](std::string const & word) {
        return word.find('\0') != std::string::npos;
    };
    return !words.empty() && std::none_of(words.begin(), words.end(), hasZero);
}

/// Starts a program. That takes a free slot, descriptors and a process; if other programs use them
/// all, it waits until some are free.
class Starter {
public:
    Starter(std::optional<Child> & child, std::vector<std::string> const & words)
        : child_(child), words_(words) {}

    /// Returns nullopt once the program is running, or why it could not be started.
    std::optional<RunResult> before(Clock::time_point end) {
        while (Clock::now() < end && !ChildSlot::allKilled()) {
            bool const waits = error_ == 0 ? tryAlongsideOthers() : tryAlone();
            if (!waits) {
                return child_ ? std::nullopt : std::optional(notStarted());
            }
            std::this_thread::sleep_for(1ms);
        }
        return ChildSlot::allKilled() ? Interrupted{} : notStarted();
    }

private:
    // Two programs that start at the same time can each take what the other needs. So after a
    // failure, a program is started while no other starts: then only running programs can cause
    // a lack.
    inline static std::shared_mutex starts;

    /// Returns whether to wait and try again.
    bool tryAlongsideOthers() {
        std::shared_lock const others(starts);
        return !tryOnce();
    }

    /// As above. The others are looked for first: one that ends after this attempt has failed can
    /// still have been the reason.
    bool tryAlone() {
        std::unique_lock const alone(starts);
        bool const othersAreRunning = ChildSlot::anyTaken();
        return !tryOnce() && othersAreRunning;
    }

    /// Returns whether that is final: the program is running, or waiting cannot help.
    bool tryOnce() {
        auto slot = ChildSlot::take();
        if (!slot) {
            return false;
        }
        try {
            child_.emplace(words_, *std::move(slot));
            return true;
        } catch (RelativeEntryRefused const & error) {
            error_ = error.code().value();
            onlyInRelativeEntry_ = true;
        } catch (std::system_error const & error) {
            error_ = error.code().value();
        }
        return error_ != EMFILE && error_ != ENFILE && error_ != EAGAIN;
    }

    RunResult notStarted() const {
        switch (error_) {
        case 0:
            return TimeLimitReached{};
        case ECANCELED:
            return Interrupted{};
        default:
            return NotStarted{error_, onlyInRelativeEntry_};
        }
    }

    std::optional<Child> & child_;
    std::vector<std::string> const & words_;
    int error_ = 0; ///< why the last attempt failed
    bool onlyInRelativeEntry_ = false;
};

} // namespace

RunResult run(std::vector<std::string> const & words, Limits const & limits,
              std::function<void(std::string_view)> const & received) {
    if (!areValidWords(words)) {
        return NotStarted{EINVAL};
    }
    std::optional<Child> child;
    if (auto failure = Starter(child, words).before(limits.end)) {
        return *std::move(failure);
    }
    return OutputCollector(*child, limits, received).collect();
}

} // namespace vxshow::system
