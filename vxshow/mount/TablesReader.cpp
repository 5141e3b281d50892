#include "vxshow/mount/TablesReader.h"

#include "vxshow/mount/Members.h"
#include "vxshow/mount/Values.h"

#include <array>

namespace vxshow {

namespace {

using VxlanController::ArpEntryV2;
using VxlanController::MacVtepFloodListV2;
using VxlanController::MacVtepMultiPathV2;
using VxlanController::MacVtepV2;
using VxlanController::VniTables;

constexpr Vex::U32 maxCount = 0xFFFFFFFF;

void readUnicast(JsonValue value, VniTables & tables) {
    value.members(anObjectByMac, [&](JsonText const & key, JsonValue entry) {
        auto const mac = readMac(key);
        auto const binding = readBinding(entry);
        onlyNew(tables.macVtepIs(MacVtepV2(mac, binding.vtep, binding.moves)), key);
    });
}

void readMultipath(JsonValue value, VniTables & tables) {
    value.members(anObjectByMac, [&](JsonText const & key, JsonValue list) {
        MacVtepMultiPathV2 entry(readMac(key));
        readVteps(list, [&](Nolt::IpAddr vtep) {
            auto const before = entry.vtepIp().size();
            entry.vtepIpIs(vtep, true);
            return entry.vtepIp().size() > before;
        });
        onlyNew(tables.macVtepMultiPathIs(std::move(entry)), key);
    });
}

void readFlood(JsonValue value, VniTables & tables) {
    value.members(anObjectByMac, [&](JsonText const & key, JsonValue list) {
        auto const entry = Vex::makePtr<MacVtepFloodListV2>(readMac(key));
        readVteps(list, [&](Nolt::IpAddr vtep) {
            auto const before = entry->vtepIp().size();
            entry->vtepIpIs(vtep, true);
            return entry->vtepIp().size() > before;
        });
        onlyNew(tables.macVtepFloodListIs(entry), key);
    });
}

ArpEntryV2 readArpEntry(Nolt::IpGenAddr const & ip, JsonValue value) {
    enum Name : std::size_t { macName, preferenceName, changesName };

    static constexpr std::array<std::string_view, 3> names{"mac", "preference", "changes"};
    Members members(names);
    Nolt::EthAddr mac;
    Vex::U32 preference = 0;
    Vex::U32 changes = 0;
    auto const * const start = value.at();
    value.members("an object of \"mac\", \"preference\" and \"changes\"",
                  [&](JsonText const & name, JsonValue member) {
                      switch (members.take(name)) {
                      case macName:
                          mac = readMac(member.text(anEthernetAddress));
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

void readArp(JsonValue value, VniTables & tables) {
    value.members("an object whose members are IP addresses",
                  [&](JsonText const & key, JsonValue entry) {
                      auto const ip = readIp(key);
                      onlyNew(tables.arpIs(readArpEntry(ip, entry)), key);
                  });
}

void readTables(JsonValue value, VniTables & tables) {
    static constexpr std::array<std::string_view, 4> names{"unicast", "multipath", "flood", "arp"};
    static constexpr std::array readers{readUnicast, readMultipath, readFlood, readArp};
    Members members(names);
    value.members("an object of tables", [&](JsonText const & name, JsonValue table) {
        readers[members.take(name)](table, tables);
    });
}

} // namespace

void TablesReader::read(JsonValue value, VniTables & into) {
    check(value);
    if (selection_.macTables) {
        into.macTablesFrom(scratch_);
    }
    if (selection_.arpTables) {
        into.arpTableFrom(scratch_);
    }
}

void TablesReader::check(JsonValue value) {
    scratch_.clear();
    readTables(value, scratch_);
}

Vex::Ptr<VxlanController::VniStatusDirV2> TablesReader::readVniStatusDir(JsonValue value,
                                                                         bool selected) {
    auto dir = Vex::makePtr<VxlanController::VniStatusDirV2>();
    vnis_.clear();
    value.members("an object whose members are VNIs", [&](JsonText const & key, JsonValue tables) {
        auto const vni = readVni(key);
        onlyNew(vnis_.upsert(VniSet::Slot(vni, true)), key);
        if (selected && selection_.takesVni(vni)) {
            read(tables, *dir->vniStatusV2Is(vni));
        } else {
            check(tables);
        }
    });
    return dir;
}

} // namespace vxshow
