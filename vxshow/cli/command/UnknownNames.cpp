#include "vxshow/cli/command/UnknownNames.h"

#include "Vex/Errors.h"
#include "state/LRStatusV2.h"
#include "state/VniStatusDirV2.h"
#include "vxshow/text/Similar.h"

#include <algorithm>

namespace vxshow::cli::command {

namespace {

std::string suggestion(std::string_view typed, AskedNames const & names) {
    std::vector<std::string_view> candidates = names.words;
    candidates.insert(candidates.end(), names.known.begin(), names.known.end());
    auto const similar = text::mostSimilar(typed, candidates);
    return similar ? "; did you mean " + Vex::printable(*similar) + "?" : "";
}

std::string quotedTwice(std::string_view name) {
    return " \"" + Vex::printable(name) + "\"";
}

} // namespace

std::vector<std::string> unknownNames(AskedNames const & names, bool complete) {
    std::vector<std::string> lines;
    std::string const start = std::string(names.option)
                                  .append(": no ")
                                  .append(names.kind)
                                  .append(complete ? "" : " of those that answered");
    for (std::string const & name : names.asked.names()) {
        if (names.known.find(name) == names.known.end()) {
            bool const canBeMisspelt = complete && !filter::readMac(name);
            lines.push_back(start + " is named" + quotedTwice(name) +
                            (canBeMisspelt ? suggestion(name, names) : ""));
        }
    }
    for (std::string const & pattern : names.asked.patterns()) {
        if (std::none_of(names.known.begin(), names.known.end(), [&](std::string const & known) {
                return state::narrow::matchesPattern(pattern, known);
            })) {
            lines.push_back(start + " has a name like" + quotedTwice(pattern));
        }
    }
    return lines;
}

NameSet switchNames(state::Mount const & mount) {
    NameSet names;
    if (auto const & switches = mount.received.switches) {
        for (auto at = switches->entityPtrIteratorConst(); at; ++at) {
            names.emplace(at.name().stringValue());
        }
    }
    return names;
}

NameSet routerNames(state::Mount const & mount) {
    NameSet names;
    if (auto const & status = mount.routers.lRStatusDir) {
        for (auto at = status->entityPtrIteratorConst(); at; ++at) {
            names.emplace(at.name().stringValue());
        }
    }
    if (auto const & published = mount.routers.publishStatus) {
        auto const prefix = VxlanController::Cli::LRMapBase::pathPrefix();
        for (auto const & system : published->system()) {
            for (Controller::MountDesc const & path : system.publishedMount()) {
                if (path.path().starts_with(prefix)) {
                    names.emplace(path.path().substr(prefix.size()));
                }
            }
        }
    }
    return names;
}

std::vector<std::string> unknownRouters(filter::NameFilter const & routers,
                                        state::Reading const & state) {
    if (routers.isNone()) {
        return {};
    }
    auto const asked = routers.all();
    return unknownNames(
        {.option = "--router", .kind = "router", .asked = asked, .known = routerNames(state.mount)},
        state.complete);
}

} // namespace vxshow::cli::command
