#pragma once

#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"
#include "tests/unit/vxshow/system/TextFile.h"
#include "vxshow/state/snapshot/Snapshot.h"

#include <string>
#include <string_view>

/// Snapshots written out in a test, read as from a file.
namespace vxshow::test {

/// The mount that the document `text` gives.
state::Mount mounted(std::string_view text);

/// What the error for the document `text` says behind the name of the file, from the line
/// number on; "accepted" when there is none.
std::string refusal(std::string_view text);

/// A whole document of which `received` is the one member that matters.
std::string withReceived(std::string_view received);

/// A whole document of which `advertised` is the one member that matters.
std::string withAdvertised(std::string_view advertised);

/// A whole document of which `routers` is the one member that matters.
std::string withRouters(std::string_view routers);

/// A whole document in which `tables` are those of VNI 10 of the switch leaf1.
std::string withTables(std::string_view tables);

/// What `refusal` says of a value behind the path to it, `path`; all it says when it names
/// another path.
std::string refusalBehind(std::string_view path, std::string_view text);

/// As `refusal`, for the document `withTables(tables)`; the column is left out, and so is the
/// path to the tables. Expects the same tables to be refused in the same words where they are
/// an advertised entry.
std::string tablesRefusal(std::string_view tables);

/// The tables of VNI 10 of leaf1 in the document `withTables(tables)`.
Vex::Ptr<VxlanController::VniStatusV2 const> mountedTables(std::string_view tables);

/// What is mounted as the advertised entry `name`, or null.
Vex::Ptr<VxlanController::VniFdbStatusV2 const> entryOf(state::Mount const & mount,
                                                        std::string_view name);

/// What is mounted for the switch `name`, or null.
Vex::Ptr<VxlanController::VniStatusDirV2 const> switchOf(state::Mount const & mount,
                                                         std::string_view name);

} // namespace vxshow::test
