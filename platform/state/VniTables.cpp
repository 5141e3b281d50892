#include "state/VniTables.h"

namespace [[gnu::visibility("default")]] VxlanController {

VniTables::~VniTables() = default;

MacVtepV2 VniTables::macVtepTable(Nolt::EthAddr const & mac) const {
    auto const * slot = macVtepTable_.find(mac);
    return slot ? slot->element() : MacVtepV2();
}

MacVtepMultiPathV2 const & VniTables::macVtepMultiPathTable(Nolt::EthAddr const & mac) const {
    static MacVtepMultiPathV2 const none;
    auto const * slot = macVtepMultiPathTable_.find(mac);
    return slot ? slot->element() : none;
}

Vex::Ptr<MacVtepFloodListV2 const>
VniTables::macVtepFloodListTable(Nolt::EthAddr const & mac) const {
    auto const * slot = macVtepFloodListTable_.find(mac);
    return slot ? slot->element() : nullptr;
}

bool VniTables::macVtepIs(MacVtepV2 const & entry) {
    return macVtepTable_.upsert(MacVtepTable::Slot(entry));
}

bool VniTables::macVtepMultiPathIs(MacVtepMultiPathV2 entry) {
    return macVtepMultiPathTable_.upsert(MacVtepMultiPathTable::Slot(std::move(entry)));
}

bool VniTables::macVtepFloodListIs(Vex::Ptr<MacVtepFloodListV2 const> entry) {
    return macVtepFloodListTable_.upsert(MacVtepFloodListTable::Slot(std::move(entry)));
}

bool VniTables::arpIs(ArpEntryV2 const & entry) {
    return arpTable_.upsert(ArpTable::Slot(entry));
}

std::optional<std::size_t> VniTables::macVtepTableIs(std::vector<MacVtepTable::Slot> & entries) {
    return macVtepTable_.fill(entries);
}

std::optional<std::size_t>
VniTables::macVtepMultiPathTableIs(std::vector<MacVtepMultiPathTable::Slot> & entries) {
    return macVtepMultiPathTable_.fill(entries);
}

std::optional<std::size_t>
VniTables::macVtepFloodListTableIs(std::vector<MacVtepFloodListTable::Slot> & entries) {
    return macVtepFloodListTable_.fill(entries);
}

std::optional<std::size_t> VniTables::arpTableIs(std::vector<ArpTable::Slot> & entries) {
    return arpTable_.fill(entries);
}

} // namespace VxlanController
