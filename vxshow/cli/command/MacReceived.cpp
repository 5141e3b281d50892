#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"
#include "vxshow/cli/command/UnknownNames.h"
#include "vxshow/listing/MacRows.h"
#include "vxshow/state/SourceNames.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct MacReceived {
    MacFilters typed;
    filter::SourceFilter source;
    Vex::Ptr<Cli::VcsVniReceived> command;

    void addFilters(CLI::App & options) {
        typed.addTo(options);
        addSourceFilter(options, source);
    }

    state::Selection selection() const {
        return {.advertised = false,
                .routers = false,
                .arpTables = false,
                .vni = typed.vnis.one,
                .mac = typed.macs.one,
                .source = source.one};
    }

    std::vector<std::string> unknown(state::Reading const & state) const {
        auto const asked = source.askedSwitches();
        if (asked.empty()) {
            return {};
        }
        return unknownNames({.option = "--source",
                             .kind = "source",
                             .asked = asked,
                             .known = switchNames(state.mount),
                             .words = {state::sourceWords.begin(), state::sourceWords.end()}},
                            state.complete);
    }

    state::Mount::Received narrowed(state::Mount::Received const & received) const {
        auto const tables = typed.narrowing();
        if (tables.keepsAll() && !source.isList) {
            return received;
        }
        state::narrow::KeepName keepSwitch;
        state::narrow::KeepName keepSource;
        if (source.isList) {
            keepSwitch = [&](std::string_view name) { return source.takesSwitch(name); };
            keepSource = [&](std::string_view name) { return source.takesSource(name); };
        }
        return {.switches = state::narrow::narrowedSwitches(received.switches, keepSwitch, tables),
                .sources = state::narrow::narrowedSources(received.sources, keepSource, tables),
                .evpn = state::narrow::narrowedEvpn(received.evpn, keepSource, tables)};
    }

    void build(state::Mount const & mount, Output const & output) {
        auto const state = narrowed(mount.received);
        command = Cli::vcsVniReceivedFactory(
            state.switches, state.sources, state.evpn, output.vniDotted, typed.vnis.one,
            typed.macs.one, source.one,
            vtepListOf(typed.vteps, state.switches, state.sources, state.evpn));
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount, output);
        renderOn(fd, output, *command);
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        command->initialize();
        return {command};
    }

    static listing::Tables tables() { return listing::macReceivedTables; }

    void walkTable(state::Mount const & mount, std::size_t table, listing::RowSink & sink) const {
        listing::walk(*command, mount.counters, table, sink);
    }
};

} // namespace

void addMacReceived(CLI::App & mac, CommandLine & chosen) {
    addCommand<MacReceived>(mac, "received",
                            "The MAC tables received from switches and other sources", chosen);
}

Collection collectMacReceived(CLI::App & options) {
    return addCollection<MacReceived>(options);
}

} // namespace vxshow::cli::command
