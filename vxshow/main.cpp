#include "Trace/DescriptorSink.h"
#include "Trace/Handle.h"
#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "vxshow/cli/CommandLine.h"
#include "vxshow/cli/FrameHead.h"
#include "vxshow/cli/MountState.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/completion/Complete.h"
#include "vxshow/system/Children.h"
#include "vxshow/system/DescriptorIo.h"
#include "vxshow/system/MemoryFile.h"
#include "vxshow/system/StandardStreams.h"
#include "vxshow/system/UtcTime.h"
#include "vxshow/terminal/Exit.h"
#include "vxshow/terminal/InterruptSignal.h"
#include "vxshow/terminal/OutOfMemory.h"
#include "vxshow/terminal/PagerChoice.h"
#include "vxshow/terminal/ProgressLine.h"
#include "vxshow/terminal/Say.h"
#include "vxshow/terminal/Screen.h"
#include "vxshow/terminal/TerminalOutput.h"
#include "vxshow/terminal/Watch.h"
#include "vxshow/terminal/WrittenBytes.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <iterator>
#include <limits>
#include <malloc.h>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <variant>
#include <vector>

namespace vxshow {
namespace {

[[noreturn]] void print(cli::Help const & help) {
    if (!help.isAsked) {
        static_cast<void>(system::writeAll(STDERR_FILENO, help.text));
        terminal::exitNow(terminal::ExitStatus::usage);
    }
    if (system::writeAll(STDOUT_FILENO, help.text)) {
        terminal::fail(terminal::ExitStatus::failed, "standard output: cannot be written");
    }
    terminal::exitNow(terminal::ExitStatus::success);
}

/// Keeps the memory that reading frees for the listing that follows. The system clears each page
/// that it hands out, and a fifth of those that a large listing touches can be reused. For the
/// same reason the threads that read live sources allocate from the listing's arena.
void keepFreedMemory() {
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

/// Ends the line on which an interrupted document stops. The user has asked to stop, so a failure
/// is of no interest.
void endLine() {
    static_cast<void>(system::writeAll(STDOUT_FILENO, "\n"));
}

/// Whether the listing goes to a terminal. Asked once, so that all that depends on it agrees.
bool showsOnTerminal() {
    static bool const shows = ::isatty(STDOUT_FILENO) == 1;
    return shows;
}

/// The output options, with where the rows of the front end's own forms are shown.
cli::Output outputOf(cli::CommandLine const & line) {
    auto output = line.output;
    if (showsOnTerminal()) {
        output.surface = {true, terminal::screenSize(STDOUT_FILENO).columns};
    }
    return output;
}

/// Writes the listing to a file or a pipe. The library ends an interrupted text at a line end, but
/// JSON anywhere; if the last byte of indented JSON was a line end, an empty line follows.
void renderUnchanged(cli::CommandLine const & line, state::Mount const & mount) {
    bool const isText = line.output.format == cli::Format::text && line.command != "capture";
    terminal::WrittenBytes const written;
    line.render(mount, STDOUT_FILENO, line.output);
    if (outfmt::interruptTaken() && !isText && line.toStandardOutput && written.any()) {
        endLine();
    }
}

/// The front end's own forms align their columns themselves.
terminal::Tables tablesOf(cli::CommandLine const & line) {
    return line.output.rows ? terminal::Tables::asTheyAre : terminal::Tables::aligned;
}

/// Which lines of the listing have colour on a terminal. A listing in a pipe or a file has none:
/// programs read it.
std::optional<terminal::Coloring> coloringOf(cli::CommandLine const & line) {
    if (!showsOnTerminal() || !terminal::hasColor(line.color, STDOUT_FILENO)) {
        return std::nullopt;
    }
    if (line.output.rows) {
        return line.output.rows->form == listing::Form::wide ? terminal::Coloring::rows
                                                             : terminal::Coloring::none;
    }
    bool const isFixed = line.output.format == cli::Format::text && !line.tables.empty();
    return isFixed ? terminal::Coloring::fixedText : terminal::Coloring::none;
}

/// Writes the listing. On a terminal, control characters in it are replaced, and the process ends
/// with `status` when the user closes a pager early.
void renderToStandardOutput(cli::CommandLine const & line, state::Mount const & mount,
                            terminal::ExitStatus status) {
    // The library reports an interrupt through `stdout`, whose buffer is written after the listing.
    std::setvbuf(stdout, nullptr, _IOFBF, BUFSIZ);
    if (!showsOnTerminal()) {
        return renderUnchanged(line, mount);
    }
    auto pager =
        line.usesPager ? terminal::choosePager(STDOUT_FILENO, line.settings->pager) : std::nullopt;
    auto const coloring = !pager || pager->showsColor ? coloringOf(line) : std::nullopt;
    terminal::TerminalOutput terminal(
        STDOUT_FILENO, std::move(pager), [status] { terminal::exitNow(status); }, tablesOf(line),
        coloring.value_or(terminal::Coloring::none));
    line.render(mount, terminal.descriptor(), outputOf(line));
    terminal.finish();
    if (outfmt::interruptTaken() && terminal.endsWithinLine()) {
        endLine();
    }
}

/// How many addresses read as others in the text that was rendered for a terminal; 0 elsewhere.
std::size_t cutAddresses(cli::CommandLine const & line) {
    bool const isText = line.output.format == cli::Format::text && !line.output.rows;
    return showsOnTerminal() && isText && line.cutAddresses ? line.cutAddresses() : 0;
}

/// The remark on that many addresses. It needs no memory: the listing has been shown, so nothing
/// must fail now.
class CutRemark {
public:
    explicit CutRemark(std::size_t cut) {
        length_ =
            std::snprintf(text_.data(), text_.size(),
                          cut == 1 ? "%zu address is cut in this table; -o wide shows it whole"
                                   : "%zu addresses are cut in this table; -o wide shows them "
                                     "whole",
                          cut);
    }

    std::string_view text() const { return {text_.data(), static_cast<std::size_t>(length_)}; }

private:
    std::array<char, 96> text_;
    int length_;
};

/// Reads the state; remarks on its sources go to standard error.
state::Reading readState(cli::CommandLine const & line) {
    try {
        auto reading = terminal::readWithProgress(
            cli::stateReader(line.state, state::Keep::nothing), line.selection);
        for (std::string const & remark : reading.remarks) {
            terminal::say(remark);
        }
        return reading;
    } catch (state::StateError const & error) {
        terminal::fail(terminal::ExitStatus::failed, error.what());
    }
}

std::string renderFailure(cli::CommandLine const & line, std::exception const & error) {
    return line.command + ": " + Vex::printable(error.what());
}

/// Names in filters that the state does not have.
std::vector<std::string> unknownNames(cli::CommandLine const & line, state::Reading const & state) {
    return line.unknownNames ? line.unknownNames(state) : std::vector<std::string>();
}

/// The exit status of a listing that was printed. A source that failed can be the one that has the
/// name.
terminal::ExitStatus statusOf(state::Reading const & state, bool unknownName) {
    if (!state.complete) {
        return terminal::ExitStatus::incomplete;
    }
    return unknownName ? terminal::ExitStatus::unknownName : terminal::ExitStatus::success;
}

[[noreturn]] void showOnce(cli::CommandLine const & line) {
    state::Reading const state = line.readsState ? readState(line) : state::Reading();
    if (!state.complete && !line.takesIncomplete) {
        terminal::fail(terminal::ExitStatus::failed,
                       line.command + ": nothing is saved, since a source could not be read; "
                                      "--incomplete saves the others");
    }
    auto const unknown = unknownNames(line, state);
    for (std::string const & remark : unknown) {
        terminal::say(remark);
    }
    auto const status = statusOf(state, !unknown.empty());
    terminal::endListingOnInterrupt();
    try {
        renderToStandardOutput(line, state.mount, status);
    } catch (std::exception const & error) {
        terminal::fail(terminal::ExitStatus::failed, renderFailure(line, error));
    }
    terminal::exitOnInterrupt();
    if (outfmt::interruptTaken()) {
        terminal::exitNow(terminal::ExitStatus::interrupted);
    }
    if (auto const cut = cutAddresses(line)) {
        terminal::say(CutRemark(cut).text());
    }
    terminal::exitNow(status);
}

/// Whether what is watched in a pipe has a line before each frame: JSON of either kind.
bool hasFrames(cli::CommandLine const & line) {
    return line.output.rows ? line.output.rows->form == listing::Form::jsonLines
                            : line.output.format != cli::Format::text;
}

/// What the command prints for this reading of the state. Raises `StateError`.
terminal::View viewOf(cli::CommandLine const & line, state::Reading reading) {
    try {
        system::MemoryFile output;
        line.render(reading.mount, output.descriptor(), outputOf(line));
        auto unknown = unknownNames(line, reading);
        auto const status = statusOf(reading, !unknown.empty());
        std::move(unknown.begin(), unknown.end(), std::back_inserter(reading.remarks));
        if (auto const cut = cutAddresses(line)) {
            reading.remarks.emplace_back(CutRemark(cut).text());
        }
        terminal::View view{output.bytes(), std::move(reading.remarks), status};
        view.tables = tablesOf(line);
        view.coloring = coloringOf(line);
        if (hasFrames(line)) {
            view.head = [time = system::UtcTime::now(),
                         origin = std::move(reading.mount.origin)](std::string const & failure) {
                return cli::frameHead(time, origin, failure);
            };
        }
        return view;
    } catch (std::exception const & error) {
        throw state::StateError(renderFailure(line, error));
    }
}

/// Each reading covers all sources: one that fails is shown as it was at its last good reading.
[[noreturn]] void watch(cli::CommandLine const & line) {
    try {
        auto const readState = cli::stateReader(line.state, state::Keep::lastGood);
        bool isFirst = true;
        terminal::watch(line.command, std::chrono::seconds(*line.state.watchSeconds),
                        [&](std::function<void()> const & meanwhile) {
                            // Once a listing is on the screen there is no room for a line of
                            // progress.
                            auto const show = [&](state::Progress const &) { meanwhile(); };
                            return viewOf(
                                line, std::exchange(isFirst, false)
                                          ? terminal::readWithProgress(readState, line.selection)
                                          : readState(line.selection, show));
                        });
    } catch (std::exception const & error) {
        terminal::fail(terminal::ExitStatus::failed, error.what());
    }
}

[[noreturn]] void show(cli::CommandLine const & line) {
    keepFreedMemory();
    // A write beyond the file size limit should fail, not end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    system::killChildrenOnTermination();
    terminal::exitOnInterrupt();
    terminal::colorMessages(line.color);
    if (line.traceLevel) {
        Trace::setSink(Trace::descriptorSink(STDERR_FILENO));
        Trace::enableAllUpTo(*line.traceLevel);
    }
    if (line.state.watchSeconds) {
        watch(line);
    }
    showOnce(line);
}

// The types of the model register themselves when the libraries are loaded, and need memory for it.
// The functions in this section run before that.
__attribute__((no_sanitize("address"))) void beforeTheLibraries(int, char **, char **) {
    terminal::exitOnOutOfMemory();
}

[[gnu::section(".preinit_array"),
  gnu::used]] void (*const firstFunction)(int, char **, char **) = beforeTheLibraries;

} // namespace
} // namespace vxshow

int main(int argc, char ** argv) {
    using namespace vxshow;
    if (!system::openClosedStandardStreams()) {
        terminal::fail(terminal::ExitStatus::failed,
                       "a standard stream is closed, and /dev/null cannot be opened");
    }
    if (cli::completion::isAsked(argc, argv)) {
        static_cast<void>(system::writeAll(STDOUT_FILENO, cli::completion::answer(argc, argv)));
        terminal::exitNow(terminal::ExitStatus::success);
    }
    auto const read = cli::readCommandLine(argc, argv, cli::command::addCommands);
    if (auto const * help = std::get_if<cli::Help>(&read)) {
        print(*help);
    }
    if (auto const * error = std::get_if<cli::UsageError>(&read)) {
        terminal::fail(terminal::ExitStatus::usage, error->line);
    }
    if (auto const * error = std::get_if<cli::InvalidConfig>(&read)) {
        terminal::fail(terminal::ExitStatus::failed, error->line);
    }
    show(std::get<cli::CommandLine>(read));
}
