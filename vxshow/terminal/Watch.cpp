#include "vxshow/terminal/Watch.h"

#include "Vex/Errors.h"
#include "vxshow/cli/MountState.h"
#include "vxshow/system/FileBytes.h"
#include "vxshow/system/TimeOfDay.h"
#include "vxshow/terminal/ProgressLine.h"
#include "vxshow/terminal/Say.h"
#include "vxshow/terminal/Screen.h"

#include <cerrno>
#include <chrono>
#include <sys/mman.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

/// A file in memory, for what a command renders.
class Answer {
public:
    Answer() : descriptor_(::memfd_create("answer", MFD_CLOEXEC)) {
        if (descriptor_ < 0) {
            throw std::system_error(errno, std::generic_category(), "no room for the answer");
        }
    }

    Answer(Answer const &) = delete;
    Answer & operator=(Answer const &) = delete;

    ~Answer() { ::close(descriptor_); }

    int descriptor() const noexcept { return descriptor_; }

    system::FileBytes bytes() const {
        ::lseek(descriptor_, 0, SEEK_SET);
        return system::FileBytes::read(descriptor_);
    }

private:
    int descriptor_;
};

system::FileBytes answerOf(cli::CommandLine const & line, state::Mount const & mount) {
    Answer answer;
    line.render(mount, answer.descriptor(), line.output);
    return answer.bytes();
}

/// One look at the state.
struct Look {
    system::FileBytes answer;
    std::string time;
    std::vector<std::string> remarks;
};

/// Raises `StateError` if the command fails.
Look look(cli::CommandLine const & line, state::Reading reading) {
    try {
        return {answerOf(line, reading.mount), system::timeOfDay(), std::move(reading.remarks)};
    } catch (std::exception const & error) {
        throw state::StateError(line.command + ": " + Vex::printable(error.what()));
    }
}

void writeAll(std::string_view text) {
    while (!text.empty()) {
        auto const written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            fail(ExitStatus::failed, "standard output: " + std::generic_category().message(errno));
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void show(cli::CommandLine const & line, Look const & look) {
    if (::isatty(STDOUT_FILENO) == 1) {
        std::string title = "vxshow " + line.command + ", every " +
                            std::to_string(*line.state.watchSeconds) + " s, at " + look.time;
        writeAll(drawn(title, look.remarks, look.answer.text(), screenSize(STDOUT_FILENO)));
        return;
    }
    writeAll(look.answer.text());
    for (std::string const & remark : look.remarks) {
        say(remark);
    }
}

} // namespace

void watch(cli::CommandLine const & line) {
    try {
        auto const readState = cli::stateReader(line.state, state::Keep::lastGood);
        auto last = look(line, readWithProgress(readState, line.selection));
        for (;;) {
            show(line, last);
            std::this_thread::sleep_for(std::chrono::seconds(*line.state.watchSeconds));
            try {
                // Once there is an answer on the screen there is no place for a line of progress.
                last = look(line, readState(line.selection, {}));
            } catch (state::StateError const & error) {
                last.remarks = {error.what(), "shown as it was at " + last.time};
            }
        }
    } catch (std::exception const & error) {
        fail(ExitStatus::failed, error.what());
    }
}

} // namespace vxshow::terminal
