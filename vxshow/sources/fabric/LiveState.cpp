#include "vxshow/sources/fabric/LiveState.h"

#include "Vex/Errors.h"
#include "outfmt/Utf8.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/fabric/SourceCounts.h"
#include "vxshow/system/TimeOfDay.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vxshow::sources::fabric {

namespace {

std::string joinedLines(std::vector<std::string> const & lines) {
    std::string text;
    for (std::string const & line : lines) {
        text.append(text.empty() ? "" : "\n").append(line);
    }
    return text;
}

} // namespace

LiveState::LiveState(Fabric fabric, bool allOrNothing, state::Keep keep)
    : sources_(std::move(fabric.sources)), timeLimit_(fabric.timeLimit),
      timeLimitSetBy_(fabric.timeLimitSetBy), remarks_(std::move(fabric.remarks)),
      allOrNothing_(allOrNothing), keep_(keep), lastGood_(sources_.size()) {}

state::Reading LiveState::read(state::Selection const & selection,
                               state::WatchProgress const & watch) {
    auto outcomes =
        askAll(sources_, selection, watch,
               timeLimit_ ? Deadline::in(*timeLimit_, timeLimitSetBy_) : Deadline::never());
    state::Reading reading;
    reading.remarks = std::exchange(remarks_, {});
    for (std::size_t index = 0; index < sources_.size(); ++index) {
        finish(index, selection, outcomes[index], reading);
    }
    bool const nothing = std::none_of(outcomes.begin(), outcomes.end(),
                                      [](Outcome const & one) { return one.answer; });
    if (nothing || (allOrNothing_ && !reading.complete)) {
        throw state::StateError(joinedLines(reading.remarks));
    }
    auto const deadline = mountDeadline(outcomes);
    try {
        reading.mount = mountSources(sources_, outcomes, selection, deadline);
        reading.mount.origin = originOf(outcomes);
    } catch (TimedOut const & late) {
        throw state::StateError(std::string(late.what()) + "; " + std::string(deadline.setBy) +
                                " allows more, and --vni asks for less");
    }
    return reading;
}

/// Putting all answers together can take as long as the slowest of their sources can. The time of
/// each source itself does not count: an answer kept from before can be of one that timed out.
Deadline LiveState::mountDeadline(std::vector<Outcome> const & outcomes) const {
    std::chrono::milliseconds longest{1};
    std::string_view setBy = fabricTimeLimit;
    for (std::size_t index = 0; index < sources_.size(); ++index) {
        if (outcomes[index].answer && sources_[index].timeLimit > longest) {
            longest = sources_[index].timeLimit;
            setBy = sources_[index].timeLimitSetBy;
        }
    }
    return Deadline::in(longest, setBy);
}

state::Origin LiveState::originOf(std::vector<Outcome> const & outcomes) const {
    state::Origin origin{system::UtcTime::now(), {}};
    for (std::size_t index = 0; index < sources_.size(); ++index) {
        auto const & source = sources_[index];
        auto const & outcome = outcomes[index];
        auto & one = origin.sources.emplace_back();
        // A name from the command line can be any bytes.
        one.name = outfmt::isUtf8(source.name) ? source.name : Vex::printable(source.name);
        one.kind = source.kind;
        one.role = source.role;
        one.read = outcome.read;
        one.failure = outcome.failure;
        if (outcome.answer) {
            one.remarks = outcome.answer->findings.warning().value_or("");
            one.counts = countsOf(*outcome.answer);
        }
    }
    return origin;
}

/// Adds the remarks on one source. The last good answer stands in for one that failed.
void LiveState::finish(std::size_t index, state::Selection const & selection, Outcome & outcome,
                       state::Reading & reading) {
    std::string const name = Vex::printable(sources_[index].name);
    auto & last = lastGood_[index];
    if (outcome.answer && keep_ == state::Keep::lastGood) {
        last = {outcome.answer, system::timeOfDay(), outcome.read};
    }
    if (!outcome.answer) {
        reading.complete = false;
        std::string remark = name + ": " + outcome.failure;
        if (last.answer && !allOrNothing_) {
            outcome.answer = last.answer;
            outcome.read = last.read;
            remark.insert(0, "STALE since " + last.time + ": ");
        }
        reading.remarks.push_back(remark);
    }
    auto const shown = subjectsShown(selection, sources_[index].role);
    auto const warning = outcome.answer ? outcome.answer->findings.warning(shown) : std::nullopt;
    if (warning) {
        reading.remarks.push_back(name + ": " + *warning);
    }
}

} // namespace vxshow::sources::fabric
