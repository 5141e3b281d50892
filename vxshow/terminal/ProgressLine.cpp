#include "vxshow/terminal/ProgressLine.h"

#include "vxshow/system/DescriptorIo.h"

#include <unistd.h>

namespace vxshow::terminal {

namespace {

constexpr std::chrono::milliseconds initialDelay{500};

/// Moves to the start of the line and erases it (ECMA-48: CR, EL).
constexpr char const * eraseLine = "\r\x1b[K";

} // namespace

ProgressLine::ProgressLine(int descriptor)
    : descriptor_(descriptor), terminal_(::isatty(descriptor) == 1) {}

ProgressLine::~ProgressLine() {
    if (drawn_) {
        draw(eraseLine);
    }
}

void ProgressLine::show(state::Progress const & progress) {
    if (!terminal_ || std::chrono::steady_clock::now() - start_ < initialDelay) {
        return;
    }
    drawn_ = true;
    draw(eraseLine + std::to_string(progress.done) + " of " + std::to_string(progress.sources) +
         (progress.sources == 1 ? " source" : " sources") + " read, " +
         std::to_string(progress.rows) + " rows");
}

void ProgressLine::draw(std::string const & text) const {
    // Progress that cannot be shown is no reason to fail.
    static_cast<void>(system::writeAll(descriptor_, text));
}

state::Reading readWithProgress(state::StateReader const & readState,
                                state::Selection const & selection) {
    ProgressLine line(STDERR_FILENO);
    return readState(selection, [&](state::Progress const & progress) { line.show(progress); });
}

} // namespace vxshow::terminal
