#include "VxlanController/arp/Collect.h"
#include "VxlanController/arp/SetOutput.h"
#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"
#include "vxshow/cli/command/UnknownNames.h"
#include "vxshow/listing/ArpRows.h"
#include "vxshow/listing/CutAddresses.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct ArpReceived {
    ArpFilters typed;
    filter::NameFilter switches;
    Vex::Ptr<Cli::ArpReceived> command;
    Vex::Ptr<Cli::VxlanVtepSet> collected;

    void addFilters(CLI::App & options) {
        typed.addTo(options);
        addNameFilter(options, "--switch", switches, "NAME",
                      "Only these switches by name or pattern, leaf*");
    }

    state::Selection selection() const {
        return {.advertised = false,
                .routers = false,
                .macTables = false,
                .vni = typed.vnis.one,
                .source = switches.one};
    }

    std::vector<std::string> unknown(state::Reading const & state) const {
        if (switches.isNone()) {
            return {};
        }
        auto const asked = switches.all();
        return unknownNames({.option = "--switch",
                             .kind = "switch",
                             .asked = asked,
                             .known = switchNames(state.mount)},
                            state.complete);
    }

    Vex::Ptr<Vex::Dir> narrowed(Vex::Ptr<Vex::Dir> const & received) const {
        auto const tables = typed.narrowing();
        if (tables.keepsAll() && switches.many.empty()) {
            return received;
        }
        state::narrow::KeepName keep;
        if (!switches.many.empty()) {
            keep = [&](std::string_view name) { return switches.many.contains(name); };
        }
        return state::narrow::narrowedSwitches(received, keep, tables);
    }

    void build(state::Mount const & mount, Output const & output) {
        command =
            Cli::arpReceivedFactory(narrowed(mount.received.switches), output.vniDotted,
                                    typed.vnis.one, typed.macs.one, typed.ips.one, switches.one);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        if (isTextOnTerminal(output)) {
            return renderKeepingTables(mount, fd, output);
        }
        build(mount, output);
        renderOn(fd, output, *command);
    }

    /// The same text. The library's command would not keep the tables for `cutAddresses`.
    void renderKeepingTables(state::Mount const & mount, int fd, Output const & output) {
        endingOnInterrupt([&] {
            collect(mount, output);
            outfmt::Printer printer(fd, static_cast<unsigned>(Format::text), true, false, true, 0);
            Cli::renderVxlanVtepSetText(printer, collected);
            printer.flush();
        });
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        collected = Cli::vxlanVtepSetFactory();
        Cli::collectArp(*command, *collected);
        return {command, collected};
    }

    static listing::Tables tables() { return listing::arpReceivedTables; }

    void walkTable(state::Mount const & mount, std::size_t table, listing::RowSink & sink) const {
        listing::walk(*collected, mount.counters, table, sink);
    }

    std::size_t cutAddresses() const { return collected ? listing::cutAddresses(*collected) : 0; }
};

} // namespace

void addArpReceived(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpReceived>(arp, "received", "The ARP tables received from switches", chosen);
}

Collection collectArpReceived(CLI::App & options) {
    return addCollection<ArpReceived>(options);
}

} // namespace vxshow::cli::command
