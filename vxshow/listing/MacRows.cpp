#include "vxshow/listing/MacRows.h"

#include <array>
#include <string_view>

namespace vxshow::listing {

namespace {

namespace Cli = VxlanController::Cli;

constexpr Column sourceColumn{"source", "Source", Type::text};
constexpr Column vniColumn{"vni", "VNI", Type::vni};
constexpr Column macColumn{"macAddr", "Mac Address", Type::mac};
constexpr Column vtepColumn{"vtepIp", "VTEP", Type::ip};
constexpr Column movesColumn{"moveCount", "Moves", Type::number};
constexpr Column listTypeColumn{"vtepIpListType", "Type", Type::text};

constexpr std::array receivedMac{sourceColumn, vniColumn, macColumn, vtepColumn, movesColumn};
constexpr std::array receivedFlood{sourceColumn, vniColumn, macColumn, vtepColumn, listTypeColumn};
constexpr std::array advertisedMac{vniColumn, macColumn, vtepColumn, movesColumn};
constexpr std::array advertisedFlood{vniColumn, macColumn, vtepColumn, listTypeColumn};

constexpr std::array receivedTables{Table{"mac", receivedMac}, Table{"flood", receivedFlood}};
constexpr std::array advertisedTables{Table{"mac", advertisedMac}, Table{"flood", advertisedFlood}};

constexpr std::string_view sendToAny = "sendToAny";
constexpr std::string_view sendToAll = "sendToAll";

/// The cells of a row, whose first ones change less often than the last. The advertised tables have
/// no source: their rows begin with the second cell.
struct MacRow {
    static constexpr std::size_t source = 0, vni = 1, mac = 2, vtep = 3, last = 4;

    std::array<Cell, 5> cells;
    RowSink & sink;
    std::size_t first;
    bool keepsMoves;

    void pass() const { sink.row(Row(cells).subspan(first)); }
};

/// Whether an entry without VTEPs has a row.
enum class Empty : bool { noRow, oneRow };

void walkUnicast(Cli::VniStatus const & status, MacRow & row) {
    row.cells[MacRow::vni] = status.vni();
    for (Cli::MacVtep const & entry : status.macVtepTable()) {
        row.cells[MacRow::mac] = entry.macAddr();
        row.cells[MacRow::vtep] = entry.vtepIp();
        row.cells[MacRow::last] = counted(entry.moveCount().value(), row.keepsMoves);
        row.pass();
    }
}

template <class VtepIps>
void walkVteps(Nolt::EthAddr const & mac, VtepIps const & vteps, Empty empty, MacRow & row) {
    row.cells[MacRow::mac] = mac;
    for (Nolt::IpAddr vtep : vteps) {
        row.cells[MacRow::vtep] = vtep;
        row.pass();
    }
    if (vteps.empty() && empty == Empty::oneRow) {
        row.cells[MacRow::vtep] = Unknown();
        row.pass();
    }
}

void walkFlood(Cli::VniStatus const & status, Empty empty, MacRow & row) {
    row.cells[MacRow::vni] = status.vni();
    row.cells[MacRow::last] = sendToAny;
    for (Cli::MacVtepMultiPath const & entry : status.macVtepMultiPathTable()) {
        walkVteps(entry.macAddr(), entry.vtepIpList(), empty, row);
    }
    row.cells[MacRow::last] = sendToAll;
    for (Cli::MacVtepFloodList const & entry : status.macVtepFloodListTable()) {
        bool const yields =
            empty == Empty::oneRow && status.macVtepMultiPathTableHas(entry.macAddr());
        if (!yields) {
            walkVteps(entry.macAddr(), entry.vtepIpFloodList(), empty, row);
        }
    }
}

void walkVnis(Cli::VniStatusList const & vnis, std::size_t table, Empty empty, MacRow & row) {
    for (Cli::VniStatus const & status : vnis.vniEntry()) {
        if (table == 0) {
            walkUnicast(status, row);
        } else {
            walkFlood(status, empty, row);
        }
    }
}

void walkSources(Vex::Ptr<Cli::SwitchDir const> const & sources, std::size_t table,
                 state::KeptCounters const & counters, MacRow & row) {
    if (!sources) {
        return;
    }
    for (Cli::Switch const & source : sources->switchList()) {
        if (auto const vnis = source.vniStatusList()) {
            std::string_view const name = source.switchId().stringValue();
            row.cells[MacRow::source] = name;
            row.keepsMoves = counters.receivedFrom(name).moves;
            walkVnis(*vnis, table, Empty::noRow, row);
        }
    }
}

} // namespace

Tables const macReceivedTables = receivedTables;
Tables const macAdvertisedTables = advertisedTables;

void walk(Cli::VcsVniReceived const & command, state::KeptCounters const & counters,
          std::size_t table, RowSink & sink) {
    MacRow row{{}, sink, MacRow::source, true};
    walkSources(command.switchDir(), table, counters, row);
    walkSources(command.nonSwitchSourceDir(), table, counters, row);
}

void walk(Cli::VcsVniAdvertised const & command, state::KeptCounters const & counters,
          std::size_t table, RowSink & sink) {
    MacRow row{{}, sink, MacRow::vni, counters.advertised.moves};
    if (auto const vnis = command.vniDir()) {
        walkVnis(*vnis, table, Empty::oneRow, row);
    }
}

} // namespace vxshow::listing
