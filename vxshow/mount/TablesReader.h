#pragma once

#include "Vex/FlatHashMap.h"
#include "Vex/Ptr.h"
#include "Vex/Slot.h"
#include "state/VniStatusDirV2.h"
#include "vxshow/mount/Json.h"
#include "vxshow/mount/Selection.h"

namespace vxshow {

/// The reader of the tables that the controller publishes for each VNI of a switch or source:
/// `{ "unicast": …, "multipath": …, "flood": …, "arp": … }`, each of which may be missing.
///
/// Every table is read into the same scratch tables first, since how long it is shows at its
/// end. What is selected is then taken from there, with no room to spare, and what is not
/// has been checked like the rest, entry against entry, without leaving a trace.
class TablesReader {
public:
    explicit TablesReader(Selection const & selection) : selection_(selection) {}

    /// Fills `into`, which is empty, with the selected tables. Throws `Refusal`.
    void read(JsonValue value, VxlanController::VniTables & into);

    /// Only checks. Throws `Refusal`.
    void check(JsonValue value);

    /// Reads `{ VNI: TABLES }`: what is selected of a source, and nothing of one that is not
    /// `selected` itself. Throws `Refusal`.
    Vex::Ptr<VxlanController::VniStatusDirV2> readVniStatusDir(JsonValue value, bool selected);

private:
    using VniSet = Vex::FlatHashMap<Vex::SetSlot<Vxlan::Vni>>;

    Selection const & selection_;
    VxlanController::VniStatusV2 scratch_{Vxlan::Vni(0)};
    VniSet vnis_;
};

} // namespace vxshow
