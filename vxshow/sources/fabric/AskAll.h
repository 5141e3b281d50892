#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/Source.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/StateReader.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vxshow::sources::fabric {

/// What became of one source.
struct Outcome {
    std::shared_ptr<Answer const> answer; ///< null if it failed
    std::string failure = {};             ///< the reason then, printable, on one line
};

/// Reads all sources, up to `maxParallelReads` side by side, and gives what became of each, in
/// their order. Each has its own time limit, from the moment in which its turn comes. `watch` is
/// called on this thread, again and again while it waits. Where the system gives fewer threads,
/// or few descriptors, it goes on with those; without threads the sources are read on this one,
/// and nobody watches.
std::vector<Outcome> askAll(std::vector<Source> const & sources, state::Selection const & selection,
                            state::WatchProgress const & watch = {});

/// A source spends its time in its own server and in its client, and the processors here are
/// shared with both when the servers are local.
inline constexpr std::size_t maxParallelReads = 16;

/// The mount of all sources that answered; `outcomes` stand in the order of `sources`.
state::Mount mountSources(std::vector<Source> const & sources,
                          std::vector<Outcome> const & outcomes,
                          state::Selection const & selection);

} // namespace vxshow::sources::fabric
