#include "vxshow/sources/fabric/AskAll.h"

#include "Vex/Errors.h"
#include "Vex/RefCount.h"
#include "vxshow/sources/Access.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/Merge.h"
#include "vxshow/sources/fabric/Readers.h"
#include "vxshow/system/Reason.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <sys/resource.h>

namespace vxshow::sources::fabric {

namespace {

constexpr std::chrono::milliseconds betweenUpdates{100};

std::size_t rowsOf(SideFacts const & side) {
    return side.macs.size() + side.floods.size() + side.bindings.size();
}

std::size_t rowsOf(Facts const & facts) {
    std::size_t rows = rowsOf(facts.remote);
    for (auto const & [name, side] : facts.local) {
        rows += rowsOf(side);
    }
    return rows;
}

/// Counts references atomically while several threads read.
class AtomicReferenceCounts {
public:
    AtomicReferenceCounts() : before_(Vex::threadSafePtr()) { Vex::threadSafePtrIs(true); }

    AtomicReferenceCounts(AtomicReferenceCounts const &) = delete;
    AtomicReferenceCounts & operator=(AtomicReferenceCounts const &) = delete;

    ~AtomicReferenceCounts() { Vex::threadSafePtrIs(before_); }

private:
    bool before_;
};

/// A failure, with what allows more time if a time limit is its reason, or one of its reasons.
std::string withRemedy(std::string failure, Deadline const & deadline) {
    if (failure.find("time limit: ") != std::string::npos && !deadline.setBy.empty()) {
        failure.append("; ").append(deadline.setBy).append(" allows more");
    }
    return failure;
}

/// Hands out the sources to the threads that ask them.
class SourceQueue {
public:
    SourceQueue(std::vector<Source> const & sources, state::Selection const & selection,
                Deadline const & deadline)
        : sources_(sources), selection_(selection), deadline_(deadline), outcomes_(sources.size()) {
        progress_.sources = sources.size();
    }

    /// Asks one source after the other until none is left.
    void work() {
        while (auto const index = next()) {
            finish(*index, outcomeOf(sources_[*index]));
        }
    }

    /// Waits for the next update of the progress; returns whether all sources are done.
    bool waitForUpdate(state::Progress & progress) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, betweenUpdates,
                          [&] { return progress_.done == progress_.sources; });
        progress = progress_;
        return progress.done == progress.sources;
    }

    /// Whether a source has not been handed out yet.
    bool isLeft() {
        std::lock_guard const lock(mutex_);
        return next_ < sources_.size();
    }

    std::vector<Outcome> & outcomes() { return outcomes_; }

private:
    std::optional<std::size_t> next() {
        std::lock_guard const lock(mutex_);
        return next_ < sources_.size() ? std::optional(next_++) : std::nullopt;
    }

    Outcome outcomeOf(Source const & source) const {
        if (deadline_.isOver()) {
            return {nullptr, withRemedy("time limit: not asked within " +
                                            system::secondsText(deadline_.limit) + " s",
                                        deadline_)};
        }
        auto const deadline = deadline_.within(source.timeLimit, source.timeLimitSetBy);
        try {
            auto answer =
                std::make_shared<Answer>(source.access->ask(source, selection_, deadline));
            return {std::move(answer), {}, system::UtcTime::now()};
        } catch (std::bad_alloc const &) {
            return {nullptr, "out of memory"};
        } catch (std::exception const & error) {
            return {nullptr, withRemedy(Vex::printable(error.what()), deadline)};
        }
    }

    void finish(std::size_t index, Outcome outcome) {
        std::lock_guard const lock(mutex_);
        ++progress_.done;
        progress_.rows += outcome.answer ? rowsOf(outcome.answer->facts) : 0;
        outcomes_[index] = std::move(outcome);
        changed_.notify_one();
    }

    std::vector<Source> const & sources_;
    state::Selection const & selection_;
    Deadline deadline_; ///< of all of them
    std::vector<Outcome> outcomes_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t next_ = 0;
    state::Progress progress_;
};

/// How many clients can run at the same time with the descriptors that this process can have. A
/// client takes six while it starts; some are left for other files. A client that finds none left
/// waits for others to end, but the time limit of its source keeps running.
std::size_t mostClients() {
    constexpr rlim_t perClient = 6;
    constexpr rlim_t others = 16;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return maxParallelReads;
    }
    return limit.rlim_cur < others + perClient ? 1 : (limit.rlim_cur - others) / perClient;
}

/// "; the largest is that of leaf1: 1000 entries", which says where to look.
std::string ofTheLargest(std::vector<Source> const & sources,
                         std::vector<Outcome> const & outcomes) {
    std::size_t most = 0;
    std::string name;
    for (std::size_t index = 0; index < sources.size(); ++index) {
        auto const rows = outcomes[index].answer ? rowsOf(outcomes[index].answer->facts) : 0;
        if (rows > most) {
            most = rows;
            name = Vex::printable(sources[index].name);
        }
    }
    return most == 0 ? ""
                     : "; the largest is that of " + name + ": " + std::to_string(most) +
                           (most == 1 ? " entry" : " entries");
}

/// Sources of one name, such as a database that is named twice, are put together.
state::Details detailsOf(std::vector<Source> const & sources,
                         std::vector<Outcome> const & outcomes) {
    state::Details details;
    for (std::size_t index = 0; index < sources.size(); ++index) {
        if (outcomes[index].answer && !outcomes[index].answer->facts.details.isEmpty()) {
            details[sources[index].name].add(outcomes[index].answer->facts.details);
        }
    }
    return details;
}

/// Received tables are those of a name, advertised ones are one for all.
state::KeptCounters countersOf(std::vector<Source> const & sources,
                               std::vector<Outcome> const & outcomes) {
    state::KeptCounters kept;
    for (std::size_t index = 0; index < sources.size(); ++index) {
        auto const & source = sources[index];
        auto const counters = source.access->counters();
        if (!outcomes[index].answer || counters.areAllKept()) {
            continue;
        }
        kept.advertised.limitTo(counters);
        if (source.role != Role::switches) {
            kept.received[listedName(source.role)].limitTo(counters);
            continue;
        }
        for (auto const & [name, side] : outcomes[index].answer->facts.local) {
            kept.received[name].limitTo(counters);
        }
    }
    return kept;
}

} // namespace

std::vector<Outcome> askAll(std::vector<Source> const & sources, state::Selection const & selection,
                            state::WatchProgress const & watch, Deadline const & deadline) {
    AtomicReferenceCounts const atomicCounts;
    SourceQueue queue(sources, selection, deadline);
    {
        auto const most = std::min({sources.size(), mostClients(), maxReads});
        Readers readers([&queue] { queue.work(); }, std::min(most, maxParallelReads), most);
        if (!readers.any()) {
            queue.work();
        }
        state::Progress progress;
        while (!queue.waitForUpdate(progress)) {
            if (queue.isLeft()) {
                readers.fill();
            }
            if (watch) {
                watch(progress);
            }
        }
    }
    return std::move(queue.outcomes());
}

state::Mount mountSources(std::vector<Source> const & sources,
                          std::vector<Outcome> const & outcomes, state::Selection const & selection,
                          Deadline const & deadline) {
    Merge mount(selection, deadline);
    try {
        for (std::size_t index = 0; index < sources.size(); ++index) {
            if (outcomes[index].answer) {
                mount.add(outcomes[index].answer->facts, sources[index].role);
            }
        }
        auto mounted = mount.mount();
        mounted.counters = countersOf(sources, outcomes);
        if (selection.details) {
            mounted.details = detailsOf(sources, outcomes);
        }
        return mounted;
    } catch (TimedOut const & late) {
        throw TimedOut(late.what() + ofTheLargest(sources, outcomes));
    }
}

} // namespace vxshow::sources::fabric
