#include "vxshow/state/snapshot/PublishedTables.h"

#include "vxshow/state/snapshot/Binding.h"
#include "vxshow/state/snapshot/Field.h"
#include "vxshow/state/snapshot/SortedByKey.h"
#include "vxshow/text/JsonAddresses.h"

#include <utility>

namespace vxshow::state::snapshot {

namespace {

using VxlanController::ArpEntryV2;
using VxlanController::MacVtepFloodListV2;
using VxlanController::MacVtepMultiPathV2;
using VxlanController::MacVtepV2;
using VxlanController::VniTables;

MacVtepV2 readUnicastEntry(text::JsonText const & key, text::JsonValue & value) {
    auto const mac = text::readMac(key);
    auto const binding = readBinding(value);
    return {mac, binding.vtep, binding.moves};
}

void writeUnicastEntry(ValuesWriter & values, MacVtepV2 const & entry) {
    writeBinding(values, Spelled(entry.macAddr()), {entry.vtepIp(), entry.moveCount()});
}

/// The VTEPs of an entry, each once.
template <class Entry>
void readVtepsOf(Entry & entry, text::JsonValue & list) {
    text::readVteps(list, [&](Nolt::IpAddr vtep) {
        auto const before = entry.vtepIp().size();
        entry.vtepIpIs(vtep, true);
        return entry.vtepIp().size() > before;
    });
}

MacVtepMultiPathV2 readMultipathEntry(text::JsonText const & key, text::JsonValue & list) {
    MacVtepMultiPathV2 entry(text::readMac(key));
    readVtepsOf(entry, list);
    return entry;
}

Vex::Ptr<MacVtepFloodListV2> readFloodEntry(text::JsonText const & key, text::JsonValue & list) {
    auto entry = Vex::makePtr<MacVtepFloodListV2>(text::readMac(key));
    readVtepsOf(*entry, list);
    return entry;
}

constexpr auto writeVtepsOfMac = [](ValuesWriter & values, auto const & entry) {
    values.addresses(Spelled(entry.macAddr()), entry.vtepIp());
};

/// What an IP address resolves to.
struct Resolution {
    Nolt::EthAddr mac;
    Vex::U8 preference = 0;
    Vex::U32 changes = 0;
};

constexpr auto arpObject = text::strictObject(
    "an object of \"mac\", \"preference\" and \"changes\"", requiredMac("mac", &Resolution::mac),
    optionalNumber("preference", &Resolution::preference),
    optionalNumber("changes", &Resolution::changes));

ArpEntryV2 readArpEntry(text::JsonText const & key, text::JsonValue & value) {
    auto const ip = text::readIp(key);
    Resolution entry;
    arpObject.read(value, entry);
    return {ip, entry.mac, entry.preference, entry.changes};
}

void writeArpEntry(ValuesWriter & values, ArpEntryV2 const & entry) {
    values.object(Spelled(entry.ipAddress()), [&] {
        writeMembers(arpObject, values,
                     Resolution{entry.macAddress(), entry.preference(), entry.changes()});
    });
}

/// The member `name` with the entries of `table`, each written by `write(values, entry)`.
template <class Table, class Key, class Write>
void writeTable(ValuesWriter & values, std::string_view name, Table const & table, Key key,
                Write && write) {
    if (!table.empty()) {
        values.object(name, [&] {
            forEachByKey(table, key, [&](auto const & entry) { write(values, entry); });
        });
    }
}

} // namespace

template <class Slot, class Read, class Fill>
void TablesReader::readTable(text::JsonValue & value, std::string_view expected,
                             std::vector<Slot> & entries, Read && read, Fill && fill) {
    auto const * const start = value.at();
    entries.clear();
    keys_.clear();
    auto const fillTable = [&] {
        if (auto const repeated = fill(entries)) [[unlikely]] {
            throw text::Refusal{start + keys_[*repeated], "it once", " again"};
        }
    };
    try {
        value.members(expected, [&](text::JsonText const & key, text::JsonValue & entry) {
            Slot slot(read(key, entry));
            keys_.push_back(static_cast<Vex::U32>(key.at() - start));
            entries.push_back(std::move(slot));
        });
    } catch (...) {
        // The first fault in the document must be reported, and that can be a repeated key before
        // this one.
        fillTable();
        throw;
    }
    fillTable();
}

/// The object of tables: the MAC tables and the ARP table of a document can go to different
/// places.
struct TablesReader::Format {
    static constexpr auto tables = text::strictObject(
        "an object of tables",
        optionalMember(
            "unicast",
            [](text::JsonValue & table, TablesReader & reader, Tables & macTables, Tables &) {
                reader.readTable(table, text::anObjectByMac, reader.unicast_, readUnicastEntry,
                                 [&](auto & entries) { return macTables.macVtepTableIs(entries); });
            },
            [](ValuesWriter & values, std::string_view name, Tables const & from) {
                writeTable(values, name, from.macVtepTable(), &MacVtepV2::macAddr,
                           writeUnicastEntry);
            }),
        optionalMember(
            "multipath",
            [](text::JsonValue & table, TablesReader & reader, Tables & macTables, Tables &) {
                reader.readTable(
                    table, text::anObjectByMac, reader.multipath_, readMultipathEntry,
                    [&](auto & entries) { return macTables.macVtepMultiPathTableIs(entries); });
            },
            [](ValuesWriter & values, std::string_view name, Tables const & from) {
                writeTable(values, name, from.macVtepMultiPathTable(), &MacVtepMultiPathV2::macAddr,
                           writeVtepsOfMac);
            }),
        optionalMember(
            "flood",
            [](text::JsonValue & table, TablesReader & reader, Tables & macTables, Tables &) {
                reader.readTable(
                    table, text::anObjectByMac, reader.flood_, readFloodEntry,
                    [&](auto & entries) { return macTables.macVtepFloodListTableIs(entries); });
            },
            [](ValuesWriter & values, std::string_view name, Tables const & from) {
                writeTable(values, name, from.macVtepFloodListTable(), &MacVtepFloodListV2::macAddr,
                           writeVtepsOfMac);
            }),
        optionalMember(
            "arp",
            [](text::JsonValue & table, TablesReader & reader, Tables &, Tables & arpTable) {
                reader.readTable(table, "an object whose members are IP addresses", reader.arp_,
                                 readArpEntry,
                                 [&](auto & entries) { return arpTable.arpTableIs(entries); });
            },
            [](ValuesWriter & values, std::string_view name, Tables const & from) {
                writeTable(values, name, from.arpTable(), &ArpEntryV2::ipAddress, writeArpEntry);
            }));
};

void TablesReader::readTables(text::JsonValue & value, VniTables & macTables,
                              VniTables & arpTable) {
    Format::tables.read(value, *this, macTables, arpTable);
}

void TablesReader::read(text::JsonValue & value, VniTables & into) {
    readTables(value, selection_.macTables ? into : unselected_,
               selection_.arpTables ? into : unselected_);
}

void TablesReader::check(text::JsonValue & value) {
    readTables(value, unselected_, unselected_);
}

Vex::Ptr<VxlanController::VniStatusDirV2> TablesReader::readVniStatusDir(text::JsonValue & value,
                                                                         bool selected) {
    auto dir = Vex::makePtr<VxlanController::VniStatusDirV2>();
    vnis_.clear();
    value.members("an object whose members are VNIs",
                  [&](text::JsonText const & key, text::JsonValue & tables) {
                      auto const vni = text::readVni(key);
                      text::onlyNew(vnis_.upsert(VniSet::Slot(vni, true)), key);
                      if (selected && selection_.vni.matches(vni)) {
                          read(tables, *dir->vniStatusV2Is(vni));
                      } else {
                          check(tables);
                      }
                  });
    return dir;
}

void writeTables(ValuesWriter & values, VniTables const & tables) {
    writeMembers(TablesReader::Format::tables, values, tables);
}

void writeTables(ValuesWriter & values, VxlanController::VniStatusDirV2 const & source) {
    for (auto const & status : source.vniStatusV2()) {
        values.object(Spelled(status.vni()), [&] { writeTables(values, status); });
    }
}

} // namespace vxshow::state::snapshot
