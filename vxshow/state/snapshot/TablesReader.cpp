#include "vxshow/state/snapshot/TablesReader.h"

#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonMembers.h"

#include <array>
#include <utility>

namespace vxshow::state::snapshot {

namespace {

using VxlanController::ArpEntryV2;
using VxlanController::MacVtepFloodListV2;
using VxlanController::MacVtepMultiPathV2;
using VxlanController::MacVtepV2;
using VxlanController::VniTables;

constexpr Vex::U32 maxCount = 0xFFFFFFFF;

MacVtepV2 readUnicastEntry(text::JsonText const & key, text::JsonValue & value) {
    auto const mac = text::readMac(key);
    auto const binding = text::readBinding(value);
    return {mac, binding.vtep, binding.moves};
}

MacVtepMultiPathV2 readMultipathEntry(text::JsonText const & key, text::JsonValue & list) {
    MacVtepMultiPathV2 entry(text::readMac(key));
    text::readVteps(list, [&](Nolt::IpAddr vtep) {
        auto const before = entry.vtepIp().size();
        entry.vtepIpIs(vtep, true);
        return entry.vtepIp().size() > before;
    });
    return entry;
}

Vex::Ptr<MacVtepFloodListV2> readFloodEntry(text::JsonText const & key, text::JsonValue & list) {
    auto entry = Vex::makePtr<MacVtepFloodListV2>(text::readMac(key));
    text::readVteps(list, [&](Nolt::IpAddr vtep) {
        auto const before = entry->vtepIp().size();
        entry->vtepIpIs(vtep, true);
        return entry->vtepIp().size() > before;
    });
    return entry;
}

ArpEntryV2 readArpEntry(text::JsonText const & key, text::JsonValue & value) {
    enum Name : std::size_t { macName, preferenceName, changesName };

    static constexpr std::array<text::MemberName, 3> names{"mac", "preference", "changes"};
    auto const ip = text::readIp(key);
    text::Members members(names);
    Nolt::EthAddr mac;
    Vex::U32 preference = 0;
    Vex::U32 changes = 0;
    auto const * const start = value.at();
    value.members("an object of \"mac\", \"preference\" and \"changes\"",
                  [&](text::JsonText const & name, text::JsonValue & member) {
                      switch (members.take(name)) {
                      case macName:
                          mac = text::readMac(member.text(text::anEthernetAddress));
                          break;
                      case preferenceName:
                          preference = member.number(0xFF);
                          break;
                      default:
                          changes = member.number(maxCount);
                      }
                  });
    members.require(macName, start);
    return {ip, mac, static_cast<Vex::U8>(preference), changes};
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
        // What is wrong first in the document is told: a key repeated before this, too.
        fillTable();
        throw;
    }
    fillTable();
}

void TablesReader::readTables(text::JsonValue & value, VniTables & macTables,
                              VniTables & arpTable) {
    enum Name : std::size_t { unicast, multipath, flood, arp };

    static constexpr std::array<text::MemberName, 4> names{"unicast", "multipath", "flood", "arp"};
    text::Members members(names);
    value.members("an object of tables", [&](text::JsonText const & name, text::JsonValue & table) {
        switch (members.take(name)) {
        case unicast:
            return readTable(table, text::anObjectByMac, unicast_, readUnicastEntry,
                             [&](auto & entries) { return macTables.macVtepTableIs(entries); });
        case multipath:
            return readTable(
                table, text::anObjectByMac, multipath_, readMultipathEntry,
                [&](auto & entries) { return macTables.macVtepMultiPathTableIs(entries); });
        case flood:
            return readTable(
                table, text::anObjectByMac, flood_, readFloodEntry,
                [&](auto & entries) { return macTables.macVtepFloodListTableIs(entries); });
        default:
            return readTable(table, "an object whose members are IP addresses", arp_, readArpEntry,
                             [&](auto & entries) { return arpTable.arpTableIs(entries); });
        }
    });
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
                      if (selected && selection_.takesVni(vni)) {
                          read(tables, *dir->vniStatusV2Is(vni));
                      } else {
                          check(tables);
                      }
                  });
    return dir;
}

} // namespace vxshow::state::snapshot
