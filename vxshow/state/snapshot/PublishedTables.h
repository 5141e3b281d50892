#pragma once

#include "Vex/FlatHashMap.h"
#include "Vex/Ptr.h"
#include "Vex/Slot.h"
#include "state/VniStatusDirV2.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

#include <string_view>
#include <vector>

namespace vxshow::state::snapshot {

/// Reads the tables that the controller publishes for each VNI of a switch or source:
/// `{ "unicast": …, "multipath": …, "flood": …, "arp": … }`, each of which can be missing.
///
/// The entries of each table are first gathered in vectors that are reused, since their number is
/// known only at the end of the table; the table is then built from all of them at once. What is
/// not selected is checked in the same way, in tables that are reused.
class TablesReader {
public:
    explicit TablesReader(Selection const & selection) : selection_(selection) {}

    /// Fills `into`, which must be empty, with the selected tables. Throws `Refusal`.
    void read(text::JsonValue & value, VxlanController::VniTables & into);

    /// Checks the tables without keeping them. Throws `Refusal`.
    void check(text::JsonValue & value);

    /// Reads `{ VNI: TABLES }`: the selected part of a source. If the source itself is not
    /// `selected`, only checks it. Throws `Refusal`.
    Vex::Ptr<VxlanController::VniStatusDirV2> readVniStatusDir(text::JsonValue & value,
                                                               bool selected);

private:
    friend void writeTables(ValuesWriter & values, VxlanController::VniTables const & tables);

    struct Format;

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
    std::vector<Vex::U32> keys_; ///< where each key is, as an offset from its table's start
};

/// Writes tables as members of the open object, entries in order of key. An empty table is left
/// out, which reads back as the same.
///
/// A snapshot does not record two things of the published state, and no command shows them: whether
/// a VTEP of a list is stored as true, as every publisher does, or as false; and whether a flood
/// list is sent to all of its VTEPs or to any one.
void writeTables(ValuesWriter & values, VxlanController::VniTables const & tables);

/// Writes the VNIs of one source as members of the open object.
void writeTables(ValuesWriter & values, VxlanController::VniStatusDirV2 const & source);

} // namespace vxshow::state::snapshot
