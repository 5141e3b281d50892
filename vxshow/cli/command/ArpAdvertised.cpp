#include "VxlanController/arp/Collect.h"
#include "VxlanController/arp/SetOutput.h"
#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Disagreement.h"
#include "vxshow/cli/command/EntryNames.h"
#include "vxshow/cli/command/Filters.h"
#include "vxshow/listing/ArpRows.h"
#include "vxshow/listing/CutAddresses.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct ArpAdvertised {
    ArpFilters typed;
    Vex::Ptr<Vex::Dir> entries; ///< those that are listed
    Vex::Ptr<Cli::ArpAdvertised> command;
    Vex::Ptr<Cli::VxlanFdbSet> collected;

    void addFilters(CLI::App & options) { typed.addTo(options); }

    state::Selection selection() const {
        return {.received = false, .routers = false, .macTables = false, .vni = typed.vnis.one};
    }

    std::vector<std::string> unknown(state::Reading const & /* state */) const { return {}; }

    Vex::Ptr<Vex::Dir> narrowed(Vex::Ptr<Vex::Dir> const & advertised) const {
        auto const tables = typed.narrowing();
        if (tables.keepsAll()) {
            return advertised;
        }
        return state::narrow::narrowedEntries(
            advertised,
            [](std::string_view name) {
                return vniOfEntryName(std::string(name), NoNumber::isAnError);
            },
            tables);
    }

    void build(state::Mount const & mount, Output const & output) {
        entries = narrowed(mount.advertised.vnis);
        command = Cli::arpAdvertisedFactory(entries, output.vniDotted, typed.vnis.one,
                                            typed.macs.one, typed.ips.one);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        if (isTextOnTerminal(output)) {
            return renderKeepingTables(mount, fd, output);
        }
        build(mount, output);
        namingFaultyEntries([&] { renderOn(fd, output, *command); });
    }

    /// The same text. The library's command would not keep the tables for `cutAddresses`.
    void renderKeepingTables(state::Mount const & mount, int fd, Output const & output) {
        endingOnInterrupt([&] {
            collect(mount, output);
            outfmt::Printer printer(fd, static_cast<unsigned>(Format::text), true, false, true, 0);
            Cli::renderVxlanFdbSetText(printer, collected);
            printer.flush();
        });
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        collected = Cli::vxlanFdbSetFactory();
        namingFaultyEntries([&] { Cli::collectArp(*command, *collected); });
        return {command, collected};
    }

    static listing::Tables tables() { return listing::arpAdvertisedTables; }

    void walkTable(state::Mount const & mount, std::size_t table, listing::RowSink & sink) const {
        listing::walk(*collected, mount.counters, table, sink);
    }

    std::size_t cutAddresses() const { return collected ? listing::cutAddresses(*collected) : 0; }

    template <class Render>
    void namingFaultyEntries(Render && render) {
        renderNamingDisagreement(entries, Cli::arpFilterOf(*command), [&] {
            renderNamingInvalidEntry(entries, NoNumber::isAnError, render);
        });
    }
};

} // namespace

void addArpAdvertised(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpAdvertised>(arp, "advertised", "The ARP tables advertised to switches", chosen);
}

Collection collectArpAdvertised(CLI::App & options) {
    return addCollection<ArpAdvertised>(options);
}

} // namespace vxshow::cli::command
