#include "vxshow/cli/command/StateListing.h"

#include "Vex/Errors.h"
#include "vxshow/cli/MemberPrinter.h"
#include "vxshow/cli/command/TextTable.h"
#include "vxshow/state/StateCounts.h"
#include "vxshow/state/snapshot/OriginObject.h"

namespace vxshow::cli::command {

namespace {

using state::SourceOrigin;
using Column = TextTable::Column;

constexpr auto right = TextTable::Alignment::right;

/// What became of a source: a word for the column State.
std::string_view wordOf(SourceOrigin const & source) {
    if (source.failure.empty()) {
        return "read";
    }
    return source.read ? "stale" : "failed";
}

void addRow(TextTable & table, SourceOrigin const & source) {
    auto const & counts = source.counts;
    std::vector<std::string> cells{
        Vex::printable(source.name), Vex::printable(source.kind),
        std::string(state::roleWords[static_cast<std::size_t>(source.role)]),
        std::string(wordOf(source)), source.read ? source.read->stringValue() : "-"};
    // Each of the two can be as large as its type.
    auto const leftOut = Vex::U64{counts.leftOut} + counts.ipv6Vteps;
    for (Vex::U64 const count : {Vex::U64{counts.switches}, Vex::U64{counts.vnis},
                                 Vex::U64{counts.localMacs}, Vex::U64{counts.remoteMacs},
                                 Vex::U64{counts.localBindings}, Vex::U64{counts.remoteBindings},
                                 Vex::U64{counts.routers}, Vex::U64{counts.routes}, leftOut}) {
        cells.push_back(source.read ? std::to_string(count) : "-");
    }
    table.add(std::move(cells));
}

void printSources(outfmt::Printer & printer, std::vector<SourceOrigin> const & sources) {
    TextTable table({{"Source"},
                     {"Kind"},
                     {"Role"},
                     {"State"},
                     {"Read"},
                     {"Switches", right},
                     {"VNIs", right},
                     {"Local MACs", right},
                     {"Remote MACs", right},
                     {"Local ARP", right},
                     {"Remote ARP", right},
                     {"Routers", right},
                     {"Routes", right},
                     {"Left out", right}});
    for (SourceOrigin const & source : sources) {
        addRow(table, source);
    }
    table.print(printer);
    printer.addFrills("\n");
    bool any = false;
    for (SourceOrigin const & source : sources) {
        for (std::string const * const line : {&source.failure, &source.remarks}) {
            if (!line->empty()) {
                printer.addFrills("%s: %s\n", Vex::printable(source.name), Vex::printable(*line));
                any = true;
            }
        }
    }
    if (any) {
        printer.addFrills("\n");
    }
}

void printOrigin(outfmt::Printer & printer, state::Mount const & mount) {
    if (!mount.origin) {
        printer.addFrills("Origin unknown: the state does not say where it comes from\n\n");
        return;
    }
    printer.addFrills("Read %s by %s\n\n", mount.origin->made.stringValue(),
                      Vex::printable(mount.origin->version));
    if (!mount.origin->sources.empty()) {
        printSources(printer, mount.origin->sources);
    }
}

/// What is advertised to switches is the same for all of them.
bool countsSources(state::TableCounts const & part) {
    return part.side == "received" || part.from != "switches";
}

/// EVPN's shared tables have no IP addresses.
bool countsBindings(state::TableCounts const & part) {
    return part.from != state::evpnName;
}

void printCounts(outfmt::Printer & printer, state::StateCounts const & counts) {
    TextTable table({{"Tables"},
                     {"Of"},
                     {"Sources", right},
                     {"VNIs", right},
                     {"MACs", right},
                     {"Multipath", right},
                     {"Flood VTEPs", right},
                     {"ARP", right}});
    for (auto const & part : counts.tables) {
        std::vector<std::string> cells{std::string(part.side), std::string(part.from)};
        cells.push_back(countsSources(part) ? std::to_string(part.sources) : "-");
        for (auto const count : {part.vnis, part.macs, part.multipath, part.floods}) {
            cells.push_back(std::to_string(count));
        }
        cells.push_back(countsBindings(part) ? std::to_string(part.bindings) : "-");
        table.add(std::move(cells));
    }
    table.print(printer);
    printer.addFrills("\nRouters: %s, with %s ports and %s routes; switches with VTEPs: %s\n",
                      std::to_string(counts.routers), std::to_string(counts.ports),
                      std::to_string(counts.routes), std::to_string(counts.routerSwitches));
}

} // namespace

void printState(outfmt::Printer & printer, state::Mount const & mount) {
    printOrigin(printer, mount);
    printCounts(printer, countsOf(mount));
}

void renderStateJson(outfmt::Printer & printer, state::Mount const & mount) {
    auto const counts = countsOf(mount);
    MemberPrinter members(printer);
    printer.start();
    if (mount.origin) {
        printer.startDict("origin");
        state::snapshot::ValuesWriter values(printer);
        state::snapshot::writeOrigin(values, *mount.origin);
        printer.endDict();
    }
    printer.startDict("counts");
    printer.startList("tables");
    for (auto const & part : counts.tables) {
        printer.startListEntry();
        members.text("side", part.side);
        members.text("of", part.from);
        if (countsSources(part)) {
            members.number("sources", part.sources);
        }
        members.number("vnis", part.vnis);
        members.number("macs", part.macs);
        members.number("multipath", part.multipath);
        members.number("floods", part.floods);
        if (countsBindings(part)) {
            members.number("bindings", part.bindings);
        }
        printer.endListEntry();
    }
    printer.endList();
    members.number("routers", counts.routers);
    members.number("ports", counts.ports);
    members.number("routes", counts.routes);
    members.number("switchesWithVteps", counts.routerSwitches);
    printer.endDict();
    printer.end();
}

} // namespace vxshow::cli::command
