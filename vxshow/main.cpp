#include "Trace/DescriptorSink.h"
#include "Trace/Handle.h"
#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "vxshow/CommandLine.h"
#include "vxshow/Exit.h"
#include "vxshow/Interrupt.h"
#include "vxshow/mount/Snapshot.h"

#include <cstdio>
#include <limits>
#include <malloc.h>
#include <unistd.h>

namespace vxshow {
namespace {

[[noreturn]] void fail(ExitStatus status, std::string const & line) {
    std::fprintf(stderr, "vxshow: %s\n", line.c_str());
    exitNow(status);
}

[[noreturn]] void answer(Help const & help) {
    bool const written = std::fputs(help.text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (!written) {
        fail(ExitStatus::failed, "standard output: cannot be written");
    }
    exitNow(ExitStatus::success);
}

Mount mountState(CommandLine const & line) {
    try {
        return readSnapshot(line.statePath, line.selection);
    } catch (std::exception const & error) {
        fail(ExitStatus::failed, error.what());
    }
}

/// Has the memory that reading frees kept for the listing, which comes next: pages from the
/// system are cleared one by one, and those are a fifth of what a large listing touches.
void keepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

[[noreturn]] void show(CommandLine const & line) {
    keepFreedMemory();
    interruptEndsTheProcess();
    if (line.traceLevel) {
        Trace::setSink(Trace::descriptorSink(STDERR_FILENO));
        Trace::enableAllUpTo(*line.traceLevel);
    }
    Mount const mount = line.readsState ? mountState(line) : Mount();
    interruptEndsTheListing();
    try {
        line.render(mount, STDOUT_FILENO, line.output);
    } catch (std::exception const & error) {
        fail(ExitStatus::failed, line.command + ": " + Vex::printable(error.what()));
    }
    interruptEndsTheProcess();
    exitNow(outfmt::interruptTaken() ? ExitStatus::interrupted : ExitStatus::success);
}

} // namespace
} // namespace vxshow

int main(int argc, char ** argv) {
    using namespace vxshow;
    auto const read = readCommandLine(argc, argv);
    if (auto const * help = std::get_if<Help>(&read)) {
        answer(*help);
    }
    if (auto const * error = std::get_if<UsageError>(&read)) {
        fail(ExitStatus::usage, error->line);
    }
    show(std::get<CommandLine>(read));
}
