#pragma once

#include "Vex/Entity.h"
#include "Vex/FlatHashMap.h"
#include "Vex/Slot.h"
#include "state/ArpEntryV2.h"
#include "state/MacVtepFloodListV2.h"
#include "state/MacVtepMultiPathV2.h"
#include "state/MacVtepV2.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace [[gnu::visibility("default")]] VxlanController {

/// What is published for one VNI: three tables keyed by MAC address and one keyed by IP
/// address. Received and advertised state have the same tables; this is their common part.
class VniTables : public Vex::Entity {
public:
    using MacVtepTable =
        Vex::FlatHashMap<Vex::ValueSlot<Nolt::EthAddr, MacVtepV2, &MacVtepV2::macAddr>>;
    using MacVtepMultiPathTable = Vex::FlatHashMap<
        Vex::ValueSlot<Nolt::EthAddr, MacVtepMultiPathV2, &MacVtepMultiPathV2::macAddr>>;
    using MacVtepFloodListTable = Vex::FlatHashMap<
        Vex::EntitySlot<Nolt::EthAddr, MacVtepFloodListV2 const, &MacVtepFloodListV2::macAddr>>;
    using ArpTable =
        Vex::FlatHashMap<Vex::ValueSlot<Nolt::IpGenAddr, ArpEntryV2, &ArpEntryV2::ipAddress>>;

    /// The tables, each iterated in its own order.
    MacVtepTable const & macVtepTable() const noexcept { return macVtepTable_; }

    MacVtepMultiPathTable const & macVtepMultiPathTable() const noexcept {
        return macVtepMultiPathTable_;
    }

    MacVtepFloodListTable const & macVtepFloodListTable() const noexcept {
        return macVtepFloodListTable_;
    }

    ArpTable const & arpTable() const noexcept { return arpTable_; }

    /// The unicast entry of `mac`, or the default one if there is none.
    MacVtepV2 macVtepTable(Nolt::EthAddr const & mac) const;

    /// The multipath entry of `mac`, or the empty one if there is none. Valid until the
    /// table is next written.
    MacVtepMultiPathV2 const & macVtepMultiPathTable(Nolt::EthAddr const & mac) const;

    /// The flood list of `mac`, or null if there is none.
    Vex::Ptr<MacVtepFloodListV2 const> macVtepFloodListTable(Nolt::EthAddr const & mac) const;

    /// The writers: each inserts the entry or overwrites the one with its key, and
    /// returns whether it is new.
    bool macVtepIs(MacVtepV2 const & entry);
    bool macVtepMultiPathIs(MacVtepMultiPathV2 entry);
    bool macVtepFloodListIs(Vex::Ptr<MacVtepFloodListV2 const> entry);
    bool arpIs(ArpEntryV2 const & entry);

    /// The fillers: each replaces its whole table by `entries`, as `Vex::FlatHashMap::fill`
    /// does, and returns the position of the first entry whose key an earlier one has, or
    /// nullopt.
    std::optional<std::size_t> macVtepTableIs(std::vector<MacVtepTable::Slot> & entries);
    std::optional<std::size_t>
    macVtepMultiPathTableIs(std::vector<MacVtepMultiPathTable::Slot> & entries);
    std::optional<std::size_t>
    macVtepFloodListTableIs(std::vector<MacVtepFloodListTable::Slot> & entries);
    std::optional<std::size_t> arpTableIs(std::vector<ArpTable::Slot> & entries);

protected:
    VniTables() = default;

    ~VniTables() override;

private:
    MacVtepTable macVtepTable_;
    MacVtepMultiPathTable macVtepMultiPathTable_;
    MacVtepFloodListTable macVtepFloodListTable_;
    ArpTable arpTable_;
};

} // namespace VxlanController
