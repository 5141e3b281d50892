#include "vxshow/listing/ArpRows.h"

#include <array>
#include <string_view>

namespace vxshow::listing {

namespace {

namespace Cli = VxlanController::Cli;

constexpr Column arpSwitchColumn{"switchId", "Switch", Type::text};
constexpr Column arpVniColumn{"vni", "VNI", Type::vni};
constexpr Column arpIpColumn{"ipAddress", "IP Address", Type::ip};
constexpr Column arpMacColumn{"macAddress", "MAC Address", Type::mac};
constexpr Column arpChangesColumn{"changes", "Changes", Type::number};
constexpr Column arpPreferenceColumn{"preference", "Preference", Type::number};

constexpr std::array receivedArp{arpSwitchColumn, arpVniColumn,     arpIpColumn,
                                 arpMacColumn,    arpChangesColumn, arpPreferenceColumn};
constexpr std::array advertisedArp{arpVniColumn, arpIpColumn, arpMacColumn, arpChangesColumn,
                                   arpPreferenceColumn};

constexpr std::array receivedArpTables{Table{"arp", receivedArp}};
constexpr std::array advertisedArpTables{Table{"arp", advertisedArp}};

/// The cells of a row. Those of the advertised table begin with the second.
struct ArpRow {
    std::array<Cell, 6> cells;
    RowSink & sink;
    std::size_t first;
    state::Counters counters;

    void pass() const { sink.row(Row(cells).subspan(first)); }
};

/// A switch and the advertised set hold their tables in collections of the same type.
void walkTables(Cli::VxlanFdbSet::ArpTableCollection const & tables, ArpRow & row) {
    for (Cli::VxlanArpTable const & table : tables) {
        row.cells[1] = Vxlan::Vni::fromString(table.vni());
        for (Cli::VxlanArpEntry const & entry : table.arpEntry()) {
            row.cells[2] = knownOrNone(entry.ipAddress());
            row.cells[3] = entry.macAddress();
            row.cells[4] = counted(entry.changes(), row.counters.changes);
            row.cells[5] = counted(entry.preference(), row.counters.preference);
            row.pass();
        }
    }
}

} // namespace

Tables const arpReceivedTables = receivedArpTables;
Tables const arpAdvertisedTables = advertisedArpTables;

void walk(Cli::VxlanVtepSet const & collected, state::KeptCounters const & counters,
          std::size_t /* table */, RowSink & sink) {
    ArpRow row{{}, sink, 0, {}};
    for (Cli::VxlanVtep const & vtep : collected.vtep()) {
        std::string_view const name = vtep.switchId();
        row.cells[0] = name;
        row.counters = counters.receivedFrom(name);
        walkTables(vtep.arpTable(), row);
    }
}

void walk(Cli::VxlanFdbSet const & collected, state::KeptCounters const & counters,
          std::size_t /* table */, RowSink & sink) {
    ArpRow row{{}, sink, 1, counters.advertised};
    walkTables(collected.arpTable(), row);
}

} // namespace vxshow::listing
