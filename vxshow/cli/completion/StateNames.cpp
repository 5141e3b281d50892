#include "vxshow/cli/completion/StateNames.h"

#include "state/VniStatusDirV2.h"
#include "vxshow/cli/command/EntryNames.h"
#include "vxshow/cli/command/SwitchesNamed.h"
#include "vxshow/cli/command/UnknownNames.h"
#include "vxshow/cli/completion/LiveNames.h"
#include "vxshow/sources/fabric/FabricFile.h"
#include "vxshow/state/SourceNames.h"
#include "vxshow/state/snapshot/Snapshot.h"

#include <algorithm>
#include <exception>
#include <set>
#include <string_view>
#include <sys/stat.h>

namespace vxshow::cli::completion {

namespace {

using command::NameSet;
namespace Cli = VxlanController::Cli;

/// Opening a pipe or a device could wait, or take what another reader should have.
bool isSmallFile(std::string const & path, std::size_t most) {
    struct stat file {};

    return stat(path.c_str(), &file) == 0 && S_ISREG(file.st_mode) && file.st_size >= 0 &&
           static_cast<std::size_t>(file.st_size) <= most;
}

class Vnis {
public:
    void addSwitches(Vex::Ptr<Vex::Dir> const & switches) {
        if (!switches) {
            return;
        }
        for (auto at = switches->entityPtrIteratorConst(); at; ++at) {
            if (auto const source =
                    Vex::dynamicPtr<VxlanController::VniStatusDirV2 const>(at.entity())) {
                add(*source);
            }
        }
    }

    void addEntries(Vex::Ptr<Vex::Dir> const & entries) {
        if (!entries) {
            return;
        }
        for (auto at = entries->entityPtrIteratorConst(); at; ++at) {
            auto const vni =
                command::vniOfEntryName(at.name().stringValue(), command::NoNumber::isAnError);
            if (vni) {
                vnis_.insert(*vni);
            }
        }
    }

    void addSources(Vex::Ptr<Cli::VniStatusDirList> const & list) {
        for (std::string_view const name : {state::hscName, state::qvxName}) {
            if (auto const source = list ? list->vniStatusDir(Vex::Name(name)) : nullptr) {
                add(*source);
            }
        }
    }

    void addEvpn(Vex::Ptr<Cli::HostFloodTableList> const & list) {
        auto const tables = list ? list->hostFloodTable(Vex::Name(state::evpnName)) : nullptr;
        if (!tables) {
            return;
        }
        if (auto const & hosts = tables->hostTable()) {
            for (auto at = hosts->begin(); at; ++at) {
                vnis_.insert(at.key().vni);
            }
        }
        if (auto const & floods = tables->floodTable()) {
            for (auto at = floods->begin(); at; ++at) {
                vnis_.insert(at.key().vni);
            }
        }
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (Vxlan::Vni const vni : vnis_) {
            names.push_back(std::to_string(vni.value()));
        }
        return names;
    }

private:
    void add(VxlanController::VniStatusDirV2 const & source) {
        for (auto const & status : source.vniStatusV2()) {
            vnis_.insert(status.vni());
        }
    }

    std::set<Vxlan::Vni> vnis_;
};

std::vector<std::string> sorted(NameSet const & names) {
    return {names.begin(), names.end()};
}

std::vector<std::string> vnisOf(state::Mount const & mount) {
    Vnis vnis;
    vnis.addSwitches(mount.received.switches);
    vnis.addSources(mount.received.sources);
    vnis.addEvpn(mount.received.evpn);
    vnis.addEntries(mount.advertised.vnis);
    vnis.addSources(mount.advertised.sources);
    vnis.addEvpn(mount.advertised.evpn);
    return vnis.names();
}

/// The part of the state that has the names.
state::Selection selectionFor(std::string const & option) {
    if (option == "--source") {
        return {.advertised = false, .routers = false, .macTables = false, .arpTables = false};
    }
    if (option == "--vni") {
        return {.routers = false};
    }
    return {.received = false, .advertised = false};
}

std::vector<std::string> namesInMount(std::string const & option, state::Mount const & mount) {
    return option == "--source"   ? sorted(command::switchNames(mount))
           : option == "--vni"    ? vnisOf(mount)
           : option == "--router" ? sorted(command::routerNames(mount))
           : option == "--switch" ? sorted(command::switchIdentifiers(mount.routers))
                                  : std::vector<std::string>();
}

/// Routers and VNIs are known only to the sources themselves.
std::vector<std::string> switchesInFabric(std::string const & option, std::string const & path) {
    NameSet names;
    if (option == "--source" || option == "--switch") {
        for (sources::Source const & source : sources::fabric::readFabricFile(path).sources) {
            if (source.role == state::Role::switches) {
                names.insert(source.name);
            }
        }
    }
    return sorted(names);
}

/// Adds the names of switches. Other names, such as VNIs, keep their own order.
void addTo(std::vector<std::string> & names, std::vector<std::string> const & switches) {
    if (switches.empty()) {
        return;
    }
    names.insert(names.end(), switches.begin(), switches.end());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

} // namespace

NamesByOption namesIn(state::Mount const & mount) {
    NamesByOption names;
    for (char const * const option : {"--source", "--vni", "--router", "--switch"}) {
        names[option] = namesInMount(option, mount);
    }
    return names;
}

std::vector<std::string> namesInState(std::string const & option, StateOptions options,
                                      config::Settings const & settings) {
    if (completeStateOptions(options, settings)) {
        return {};
    }
    try {
        if (isSmallFile(options.snapshotPath, longestSnapshot)) {
            return namesInMount(option, state::snapshot::readSnapshot(options.snapshotPath,
                                                                      selectionFor(option),
                                                                      longestSnapshot));
        }
        if (isSmallFile(options.fabricPath, longestFabricFile)) {
            auto names = liveNames(option, options);
            addTo(names, switchesInFabric(option, options.fabricPath));
            return names;
        }
        if (!options.databases.empty() || options.frr) {
            return liveNames(option, options);
        }
    } catch (std::exception const &) {
        return {}; // the command itself will report what is wrong
    }
    return {};
}

} // namespace vxshow::cli::completion
