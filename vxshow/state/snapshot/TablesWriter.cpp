#include "vxshow/state/snapshot/TablesWriter.h"

#include "vxshow/state/snapshot/SortedByKey.h"

namespace vxshow::state::snapshot {

using VxlanController::ArpEntryV2;
using VxlanController::MacVtepFloodListV2;
using VxlanController::MacVtepMultiPathV2;
using VxlanController::MacVtepV2;
using VxlanController::VniTables;

namespace {

/// The member `name` with the entries of `table`, each written by `write(entry)`.
template <class Table, class Key, class Write>
void writeTable(ValuesWriter & values, std::string_view name, Table const & table, Key key,
                Write && write) {
    if (!table.empty()) {
        values.object(name, [&] { forEachByKey(table, key, write); });
    }
}

} // namespace

TablesWriter::TablesWriter(ValuesWriter & values)
    : values_(values), mac_(values.printer(), "mac"), preference_(values.printer(), "preference"),
      changes_(values.printer(), "changes") {}

void TablesWriter::write(VniTables const & tables) {
    auto const list = [&](auto const & entry) {
        values_.addresses(Spelled(entry.macAddr()), entry.vtepIp());
    };
    writeTable(values_, "unicast", tables.macVtepTable(), &MacVtepV2::macAddr,
               [&](MacVtepV2 const & entry) {
                   values_.binding(entry.macAddr(), entry.vtepIp(), entry.moveCount());
               });
    writeTable(values_, "multipath", tables.macVtepMultiPathTable(), &MacVtepMultiPathV2::macAddr,
               list);
    writeTable(values_, "flood", tables.macVtepFloodListTable(), &MacVtepFloodListV2::macAddr,
               list);
    writeArp(tables.arpTable());
}

void TablesWriter::writeArp(VniTables::ArpTable const & table) {
    auto & printer = values_.printer();
    writeTable(values_, "arp", table, &ArpEntryV2::ipAddress, [&](ArpEntryV2 const & entry) {
        values_.object(Spelled(entry.ipAddress()), [&] {
            mac_.setValue(entry.macAddress());
            printer.addAttributesJson(1, mac_.getArg());
            if (entry.preference() != 0) {
                preference_.setValue(entry.preference());
                printer.addAttributesJson(1, preference_.getArg());
            }
            if (entry.changes() != 0) {
                changes_.setValue(entry.changes());
                printer.addAttributesJson(1, changes_.getArg());
            }
        });
    });
}

void TablesWriter::write(VxlanController::VniStatusDirV2 const & source) {
    for (auto const & status : source.vniStatusV2()) {
        values_.object(Spelled(status.vni()), [&] { write(status); });
    }
}

} // namespace vxshow::state::snapshot
