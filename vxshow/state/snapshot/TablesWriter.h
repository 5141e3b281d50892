#pragma once

#include "state/VniStatusDirV2.h"
#include "vxshow/state/snapshot/ValuesWriter.h"

namespace vxshow::state::snapshot {

/// Writes the tables that are published for each VNI of a switch or source, as `TablesReader`
/// reads them: entries by key, an empty table not at all, for the reader takes both the same.
///
/// Two things of the published state have no words in a snapshot, and no command shows them:
/// whether a VTEP of a list is stored true, as every publisher does, or false; and whether a
/// flood list is sent to all of its VTEPs or to any one.
class TablesWriter {
public:
    explicit TablesWriter(ValuesWriter & values);

    /// The tables as members of the open object.
    void write(VxlanController::VniTables const & tables);

    /// The VNIs of one source as members of the open object.
    void write(VxlanController::VniStatusDirV2 const & source);

private:
    void writeArp(VxlanController::VniTables::ArpTable const & table);

    ValuesWriter & values_;
    outfmt::StringAttrInfo mac_;
    outfmt::Attr64Info preference_;
    outfmt::Attr64Info changes_;
};

} // namespace vxshow::state::snapshot
