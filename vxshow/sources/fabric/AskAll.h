#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/Source.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/StateReader.h"
#include "vxshow/system/UtcTime.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::fabric {

/// The result of asking one source.
struct Outcome {
    std::shared_ptr<Answer const> answer;     ///< null if it failed
    std::string failure = {};                 ///< the reason then, printable, on one line
    std::optional<system::UtcTime> read = {}; ///< when the answer was complete
};

/// Asks all sources, up to `maxParallelReads` in parallel; returns their outcomes in the same
/// order. A source that does not respond gives up its place to the next one, up to `maxReads` at
/// the same time. Each has its own time limit, which starts when its turn comes; at `deadline`
/// every source that has not answered has failed. `watch` is called on this thread, every 100 ms
/// while it waits. With fewer threads or descriptors than that takes, fewer sources are asked in
/// parallel; without any thread they are asked on this one, and `watch` is not called.
std::vector<Outcome> askAll(std::vector<Source> const & sources, state::Selection const & selection,
                            state::WatchProgress const & watch = {},
                            Deadline const & deadline = Deadline::never());

/// Nearly all the time of a source goes into its own server and its client; if the servers are
/// local, they share the processors of this machine with the clients.
inline constexpr std::size_t maxParallelReads = 16;

/// Fewer than the programs that can run at the same time (vxshow/system/Run.h), since a cluster
/// takes several.
inline constexpr std::size_t maxReads = 128;

/// The mount of all sources that answered, with their details if they are selected; `outcomes` are
/// in the order of `sources`. Raises `TimedOut`, which names the source with the most facts, if
/// much is left to do at the deadline.
state::Mount mountSources(std::vector<Source> const & sources,
                          std::vector<Outcome> const & outcomes, state::Selection const & selection,
                          Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::fabric
