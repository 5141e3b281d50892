#include "vxshow/cli/command/SwitchesNamed.h"

#include "vxshow/cli/command/UnknownNames.h"
#include "vxshow/cli/filter/FilterValues.h"

#include <map>
#include <utility>

namespace vxshow::cli::command {

namespace {

/// The switches of a state, by everything that can be asked for.
class KnownSwitches {
public:
    explicit KnownSwitches(state::Mount::Routers const & state) : names_(state.switchNames) {
        if (state.switchInfoDir) {
            for (auto const & info : state.switchInfoDir->switchInfo()) {
                identifiers_.emplace(info.switchId());
            }
        }
        for (std::string const & identifier : identifiers_) {
            if (auto const mac = Nolt::EthAddr::tryFromString(identifier)) {
                byMac_.emplace(*mac, identifier);
            }
        }
    }

    void addNamed(std::string const & typed, std::set<std::string> & into) const {
        if (identifiers_.find(typed) != identifiers_.end()) {
            into.insert(typed);
            return;
        }
        if (auto const mac = filter::readMac(typed); mac && byMac_.count(*mac) > 0) {
            auto const [first, last] = byMac_.equal_range(*mac);
            for (auto at = first; at != last; ++at) {
                into.insert(at->second);
            }
            return;
        }
        auto const [first, last] = names_.equal_range(typed);
        for (auto at = first; at != last; ++at) {
            into.insert(at->second);
        }
    }

    void addLike(std::string const & pattern, std::set<std::string> & into) const {
        for (std::string const & identifier : identifiers_) {
            if (state::narrow::matchesPattern(pattern, identifier)) {
                into.insert(identifier);
            }
        }
        for (auto const & [name, identifier] : names_) {
            if (state::narrow::matchesPattern(pattern, name)) {
                into.insert(identifier);
            }
        }
    }

    /// Identifiers and names.
    NameSet all() const {
        NameSet all(identifiers_.begin(), identifiers_.end());
        for (auto const & [name, identifier] : names_) {
            all.insert(name);
        }
        return all;
    }

private:
    std::multimap<std::string, std::string> const & names_;
    std::set<std::string> identifiers_;
    std::multimap<Nolt::EthAddr, std::string> byMac_;
};

} // namespace

std::set<std::string> switchesNamed(filter::NameFilter const & switches,
                                    state::Mount::Routers const & state) {
    KnownSwitches const known(state);
    auto const asked = switches.all();
    std::set<std::string> identifiers;
    for (std::string const & name : asked.names()) {
        known.addNamed(name, identifiers);
    }
    for (std::string const & pattern : asked.patterns()) {
        known.addLike(pattern, identifiers);
    }
    return identifiers;
}

std::set<std::string, std::less<>> switchIdentifiers(state::Mount::Routers const & state) {
    return KnownSwitches(state).all();
}

std::vector<std::string> unknownSwitches(filter::NameFilter const & switches,
                                         state::Reading const & state) {
    if (switches.isNone()) {
        return {};
    }
    KnownSwitches const known(state.mount.routers);
    auto const asked = switches.all();
    state::narrow::NamePatterns unknown;
    for (std::string const & name : asked.names()) {
        std::set<std::string> found;
        known.addNamed(name, found);
        if (found.empty()) {
            unknown.addName(name);
        }
    }
    for (std::string const & pattern : asked.patterns()) {
        unknown.addPattern(pattern);
    }
    return unknownNames(
        {.option = "--switch", .kind = "switch", .asked = unknown, .known = known.all()},
        state.complete);
}

} // namespace vxshow::cli::command
