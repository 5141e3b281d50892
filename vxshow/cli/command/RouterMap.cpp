#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"
#include "vxshow/cli/command/SwitchesNamed.h"
#include "vxshow/cli/command/UnknownNames.h"
#include "vxshow/listing/CutAddresses.h"
#include "vxshow/listing/RouterRows.h"
#include "vxshow/state/narrow/NarrowRouters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct RouterMap {
    filter::NameFilter routers;
    filter::NameFilter switches;
    filter::VtepFilter vteps;
    std::string identifier; ///< of the one switch that is listed; empty: of any
    Vex::Ptr<Cli::VcsLRMap> command;

    void addFilters(CLI::App & options) {
        addRouterFilter(options, routers);
        addNameFilter(options, "--switch", switches, "SWITCH",
                      "Only these switches: by system identifier, a MAC address in any of its "
                      "forms, by name where the state knows it, or by pattern, leaf*");
        addVtepFilter(options, vteps,
                      "Only the switches of these VTEPs, IPv4; or of those of this subnet: "
                      "10.0.0.0/24");
    }

    state::Selection selection() const { return selectsRouters(); }

    std::vector<std::string> unknown(state::Reading const & state) const {
        auto lines = unknownRouters(routers, state);
        auto const more = unknownSwitches(switches, state);
        lines.insert(lines.end(), more.begin(), more.end());
        return lines;
    }

    /// The switches to list; sets `identifier` instead if the library can select the one.
    Vex::Ptr<VxlanController::SwitchInfoDir> narrowed(state::Mount::Routers const & state) {
        identifier.clear();
        if (switches.isNone()) {
            return state.switchInfoDir;
        }
        auto const identifiers = switchesNamed(switches, state);
        // Beside an identifier, the library would ignore the VTEPs.
        if (identifiers.size() == 1 && vteps.isNone()) {
            identifier = *identifiers.begin();
            return state.switchInfoDir;
        }
        return state::narrow::narrowedSwitchInfo(state.switchInfoDir, identifiers);
    }

    void build(state::Mount const & mount) {
        auto const & state = mount.routers;
        auto const switchInfo = narrowed(state);
        command = Cli::vcsLRMapFactory(
            state::narrow::narrowedPublished(state.publishStatus, routers.many), switchInfo,
            routers.one, identifier, vtepListOf(vteps, switchInfo));
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount);
        renderOn(fd, output, *command);
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & /* output */) {
        build(mount);
        command->buildLRMap(command->lRNameFilter(), command->switchFilter(),
                            command->vtepFilter());
        return {command};
    }

    static listing::Tables tables() { return listing::routerMapTables; }

    void walkTable(state::Mount const & /* mount */, std::size_t table,
                   listing::RowSink & sink) const {
        listing::walk(*command, table, sink);
    }

    std::size_t cutAddresses() const { return listing::cutAddresses(*command); }
};

} // namespace

void addRouterMap(CLI::App & router, CommandLine & chosen) {
    addCommand<RouterMap>(router, "map",
                          "Which switches carry which logical router, and by which VTEP", chosen);
}

Collection collectRouterMap(CLI::App & options) {
    return addCollection<RouterMap>(options);
}

} // namespace vxshow::cli::command
