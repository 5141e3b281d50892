#pragma once

#include "vxshow/sources/fabric/AskAll.h"
#include "vxshow/sources/fabric/Fabric.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/StateReader.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::fabric {

/// The live sources of a fabric, and the last good answer of each.
class LiveState {
public:
    /// With `allOrNothing`, a source that fails leaves nothing to show. With `Keep::lastGood`, a
    /// source that fails is shown as it last answered; the selection must then be the same each
    /// time.
    LiveState(Fabric fabric, bool allOrNothing, state::Keep keep);

    /// Reads all sources. `watch` is called as by `askAll`. The remarks of the fabric are among
    /// those of the first reading. Each source that failed, and each that has something to warn of,
    /// has a remark. Raises `StateError`, with these remarks, if there is nothing to show, and with
    /// the reason if the answers are not put together within the longest time limit of the sources
    /// shown. A source that has not answered within the time limit of the fabric has failed. The
    /// origin has no version yet.
    state::Reading read(state::Selection const & selection,
                        state::WatchProgress const & watch = {});

private:
    struct LastGood {
        std::shared_ptr<Answer const> answer = {}; ///< null: it has not answered yet
        std::string time = {};                     ///< of day, for messages
        std::optional<system::UtcTime> read = {};
    };

    Deadline mountDeadline(std::vector<Outcome> const & outcomes) const;
    /// Where the state comes from, once each outcome is the one that is shown.
    state::Origin originOf(std::vector<Outcome> const & outcomes) const;
    void finish(std::size_t index, state::Selection const & selection, Outcome & outcome,
                state::Reading & reading);

    std::vector<Source> sources_;
    std::optional<std::chrono::milliseconds> timeLimit_; ///< of the whole reading
    std::string_view timeLimitSetBy_;
    std::vector<std::string> remarks_; ///< of the fabric; empty after the first reading
    bool allOrNothing_;
    state::Keep keep_;
    std::vector<LastGood> lastGood_; ///< by position
};

} // namespace vxshow::sources::fabric
