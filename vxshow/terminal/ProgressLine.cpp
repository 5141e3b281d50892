#include "vxshow/terminal/ProgressLine.h"

#include <unistd.h>

namespace vxshow::terminal {

namespace {

constexpr std::chrono::milliseconds quietAtFirst{500};

/// To the start of the line, and all behind it erased (ECMA-48: CR, EL).
constexpr char const * overTheLine = "\r\x1b[K";

} // namespace

ProgressLine::ProgressLine(int descriptor)
    : descriptor_(descriptor), terminal_(::isatty(descriptor) == 1) {}

ProgressLine::~ProgressLine() {
    if (drawn_) {
        write(overTheLine);
    }
}

void ProgressLine::show(state::Progress const & progress) {
    if (!terminal_ || std::chrono::steady_clock::now() - start_ < quietAtFirst) {
        return;
    }
    drawn_ = true;
    write(overTheLine + std::to_string(progress.done) + " of " + std::to_string(progress.sources) +
          (progress.sources == 1 ? " source" : " sources") + " read, " +
          std::to_string(progress.rows) + " rows");
}

void ProgressLine::write(std::string const & text) const {
    // A terminal that takes no more is no reason to fail.
    [[maybe_unused]] auto const written = ::write(descriptor_, text.data(), text.size());
}

state::Reading readWithProgress(state::StateReader const & readState,
                                state::Selection const & selection) {
    ProgressLine line(STDERR_FILENO);
    return readState(selection, [&](state::Progress const & progress) { line.show(progress); });
}

} // namespace vxshow::terminal
