#include "vxshow/state/StateReader.h"

#include "Vex/Errors.h"
#include "vxshow/sources/fabric/AskAll.h"
#include "vxshow/sources/fabric/FabricFile.h"
#include "vxshow/sources/frr/FrrKind.h"
#include "vxshow/sources/ovsdb/OvsdbKind.h"
#include "vxshow/state/snapshot/Snapshot.h"
#include "vxshow/terminal/ProgressLine.h"
#include "vxshow/terminal/TimeOfDay.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <unistd.h>
#include <utility>

namespace vxshow::state {

namespace {

Reading readOneSnapshot(std::string const & path, Selection const & selection) {
    try {
        return {snapshot::readSnapshot(path, selection)};
    } catch (std::exception const & error) {
        throw StateError(error.what());
    }
}

/// The sources of a fabric, and what each has told last.
class LiveState {
public:
    LiveState(std::vector<sources::Source> sources, bool allOrNothing, Keep keep)
        : sources_(std::move(sources)), allOrNothing_(allOrNothing), keep_(keep),
          lastGood_(sources_.size()) {}

    Reading read(Selection const & selection) {
        auto outcomes = readAll(selection);
        Reading reading;
        for (std::size_t index = 0; index < sources_.size(); ++index) {
            finish(index, outcomes[index], reading);
        }
        bool const nothing = std::none_of(outcomes.begin(), outcomes.end(),
                                          [](auto const & one) { return one.answer; });
        if (nothing || (allOrNothing_ && !reading.complete)) {
            throw StateError(joined(reading.remarks));
        }
        reading.mount = sources::fabric::mountSources(sources_, outcomes, selection);
        return reading;
    }

private:
    struct LastGood {
        std::shared_ptr<sources::Answer const> answer = {};
        std::string time = {};
    };

    /// Behind a table that is on the screen there is no place for a line of progress.
    std::vector<sources::fabric::Outcome> readAll(Selection const & selection) {
        if (keep_ == Keep::lastGood && std::exchange(again_, true)) {
            return sources::fabric::askAll(sources_, selection);
        }
        terminal::ProgressLine line(STDERR_FILENO);
        return sources::fabric::askAll(
            sources_, selection,
            [&](sources::fabric::Progress const & progress) { line.show(progress); });
    }

    /// Says what there is to say of one source, and has the last good reading stand in for one
    /// that failed.
    void finish(std::size_t index, sources::fabric::Outcome & outcome, Reading & reading) {
        std::string const name = Vex::printable(sources_[index].name);
        auto & last = lastGood_[index];
        if (outcome.answer && keep_ == Keep::lastGood) {
            last = {outcome.answer, terminal::timeOfDay()};
        }
        if (!outcome.answer) {
            reading.complete = false;
            std::string remark = name + ": " + outcome.failure;
            if (last.answer && !allOrNothing_) {
                outcome.answer = last.answer;
                remark += "; shown as it was at " + last.time;
            }
            reading.remarks.push_back(remark);
        }
        auto const warning = outcome.answer ? outcome.answer->findings.warning() : std::nullopt;
        if (warning) {
            reading.remarks.push_back(name + ": " + *warning);
        }
    }

    static std::string joined(std::vector<std::string> const & lines) {
        std::string text;
        for (std::string const & line : lines) {
            text.append(text.empty() ? "" : "\n").append(line);
        }
        return text;
    }

    std::vector<sources::Source> sources_;
    bool allOrNothing_;
    Keep keep_;
    std::vector<LastGood> lastGood_;
    bool again_ = false;
};

/// The command line has checked the remotes.
std::vector<sources::Source> typedSources(cli::StateOptions const & options) {
    std::vector<sources::Source> sources;
    for (std::string const & remotes : options.databases) {
        sources.push_back(sources::ovsdb::sourceAt(remotes));
    }
    if (options.frr) {
        sources.push_back(sources::frr::localSource());
    }
    return sources;
}

std::vector<sources::Source> sourcesOf(cli::StateOptions const & options) {
    if (options.fabricPath.empty()) {
        return typedSources(options);
    }
    try {
        return sources::fabric::readFabricFile(options.fabricPath);
    } catch (sources::fabric::FabricFileError const & error) {
        throw StateError(error.what());
    }
}

} // namespace

std::function<Reading(Selection const &)> stateReader(cli::StateOptions const & options,
                                                      Keep keep) {
    if (!options.snapshotPath.empty()) {
        return [path = options.snapshotPath](Selection const & selection) {
            return readOneSnapshot(path, selection);
        };
    }
    auto state = std::make_shared<LiveState>(sourcesOf(options), options.allOrNothing, keep);
    return [state](Selection const & selection) {
        try {
            return state->read(selection);
        } catch (StateError const &) {
            throw;
        } catch (std::exception const & error) {
            throw StateError(Vex::printable(error.what()));
        }
    };
}

} // namespace vxshow::state
