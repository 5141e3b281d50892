#pragma once

#include "Vex/FlatHashMap.h"
#include "Vex/Ptr.h"
#include "Vex/Slot.h"
#include "state/VniStatusDirV2.h"
#include "vxshow/state/Selection.h"
#include "vxshow/text/Json.h"

#include <string_view>
#include <vector>

namespace vxshow::state::snapshot {

/// The reader of the tables that the controller publishes for each VNI of a switch or source:
/// `{ "unicast": …, "multipath": …, "flood": …, "arp": … }`, each of which may be missing.
///
/// The entries of every table are gathered in the same vectors first, since how many there are
/// shows at its end; the table is then made of all of them at once. What is not selected is
/// checked like the rest, entry against entry, in tables that the next ones are put in.
class TablesReader {
public:
    explicit TablesReader(Selection const & selection) : selection_(selection) {}

    /// Fills `into`, which is empty, with the selected tables. Throws `Refusal`.
    void read(text::JsonValue & value, VxlanController::VniTables & into);

    /// Only checks. Throws `Refusal`.
    void check(text::JsonValue & value);

    /// Reads `{ VNI: TABLES }`: what is selected of a source, and nothing of one that is not
    /// `selected` itself. Throws `Refusal`.
    Vex::Ptr<VxlanController::VniStatusDirV2> readVniStatusDir(text::JsonValue & value,
                                                               bool selected);

private:
    using VniSet = Vex::FlatHashMap<Vex::SetSlot<Vxlan::Vni>>;
    using Tables = VxlanController::VniTables;

    void readTables(text::JsonValue & value, Tables & macTables, Tables & arpTable);

    template <class Slot, class Read, class Fill>
    void readTable(text::JsonValue & value, std::string_view expected, std::vector<Slot> & entries,
                   Read && read, Fill && fill);

    Selection const & selection_;
    VniSet vnis_;
    VxlanController::VniStatusV2 unselected_{Vxlan::Vni(0)};
    std::vector<Tables::MacVtepTable::Slot> unicast_;
    std::vector<Tables::MacVtepMultiPathTable::Slot> multipath_;
    std::vector<Tables::MacVtepFloodListTable::Slot> flood_;
    std::vector<Tables::ArpTable::Slot> arp_;
    std::vector<Vex::U32> keys_; ///< where each key stands, counted from its table's start
};

} // namespace vxshow::state::snapshot
