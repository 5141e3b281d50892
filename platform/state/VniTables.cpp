#include "state/VniTables.h"

namespace VxlanController {

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

void VniTables::clear() noexcept {
    macVtepTable_.clear();
    macVtepMultiPathTable_.clear();
    macVtepFloodListTable_.clear();
    arpTable_.clear();
}

void VniTables::macTablesFrom(VniTables & other) {
    macVtepTable_.takeFrom(other.macVtepTable_);
    macVtepMultiPathTable_.takeFrom(other.macVtepMultiPathTable_);
    macVtepFloodListTable_.takeFrom(other.macVtepFloodListTable_);
}

void VniTables::arpTableFrom(VniTables & other) {
    arpTable_.takeFrom(other.arpTable_);
}

} // namespace VxlanController
