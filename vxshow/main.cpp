#include "Trace/DescriptorSink.h"
#include "Trace/Handle.h"
#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "vxshow/cli/CommandLine.h"
#include "vxshow/cli/MountState.h"
#include "vxshow/system/Children.h"
#include "vxshow/terminal/Exit.h"
#include "vxshow/terminal/InterruptSignal.h"
#include "vxshow/terminal/ProgressLine.h"
#include "vxshow/terminal/Say.h"
#include "vxshow/terminal/TerminalOutput.h"
#include "vxshow/terminal/Watch.h"

#include <csignal>
#include <cstdio>
#include <limits>
#include <malloc.h>
#include <unistd.h>

namespace vxshow {
namespace {

[[noreturn]] void answer(cli::Help const & help) {
    bool const written = std::fputs(help.text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (!written) {
        terminal::fail(terminal::ExitStatus::failed, "standard output: cannot be written");
    }
    terminal::exitNow(terminal::ExitStatus::success);
}

/// Has the memory that reading frees kept for the listing, which comes next: pages from the
/// system are cleared one by one, and those are a fifth of what a large listing touches. For
/// that the threads that read live sources take theirs from where the listing does.
void keepFreedMemory() {
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

/// Writes the listing. What a terminal shows is made harmless for it.
void render(cli::CommandLine const & line, state::Mount const & mount) {
    if (::isatty(STDOUT_FILENO) != 1) {
        return line.render(mount, STDOUT_FILENO, line.output);
    }
    terminal::TerminalOutput terminal(STDOUT_FILENO);
    line.render(mount, terminal.descriptor(), line.output);
    terminal.finish();
}

/// Reads the state; what there is to say of it goes to standard error.
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

[[noreturn]] void showOnce(cli::CommandLine const & line) {
    state::Reading const state = line.readsState ? readState(line) : state::Reading();
    terminal::interruptEndsTheListing();
    try {
        render(line, state.mount);
    } catch (std::exception const & error) {
        terminal::fail(terminal::ExitStatus::failed,
                       line.command + ": " + Vex::printable(error.what()));
    }
    terminal::interruptEndsTheProcess();
    if (outfmt::interruptTaken()) {
        terminal::exitNow(terminal::ExitStatus::interrupted);
    }
    terminal::exitNow(state.complete ? terminal::ExitStatus::success
                                     : terminal::ExitStatus::incomplete);
}

[[noreturn]] void show(cli::CommandLine const & line) {
    keepFreedMemory();
    // A limit on the size of files is to fail the write, not to end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    system::killChildrenOnTermination();
    terminal::interruptEndsTheProcess();
    if (line.traceLevel) {
        Trace::setSink(Trace::descriptorSink(STDERR_FILENO));
        Trace::enableAllUpTo(*line.traceLevel);
    }
    if (line.state.watchSeconds) {
        terminal::watch(line);
    }
    showOnce(line);
}

} // namespace
} // namespace vxshow

int main(int argc, char ** argv) {
    using namespace vxshow;
    auto const read = cli::readCommandLine(argc, argv);
    if (auto const * help = std::get_if<cli::Help>(&read)) {
        answer(*help);
    }
    if (auto const * error = std::get_if<cli::UsageError>(&read)) {
        terminal::fail(terminal::ExitStatus::usage, error->line);
    }
    show(std::get<cli::CommandLine>(read));
}
