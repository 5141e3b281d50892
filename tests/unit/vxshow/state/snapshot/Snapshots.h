#pragma once

#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"
#include "tests/unit/vxshow/system/TextFile.h"
#include "vxshow/state/snapshot/Snapshot.h"

#include <string>
#include <string_view>

/// Snapshots written out in a test, read as from a file.
namespace vxshow::test {

/// The mount read from the document `text`.
state::Mount mounted(std::string_view text);

/// The error for the document `text` after the file name, from the line number on; "accepted" if
/// there is none.
std::string refusal(std::string_view text);

/// A complete document whose only state is `received`.
std::string withReceived(std::string_view received);

/// A complete document whose only state is `advertised`.
std::string withAdvertised(std::string_view advertised);

/// A complete document whose only state is `routers`.
std::string withRouters(std::string_view routers);

/// A complete document in which `tables` are those of VNI 10 of the switch leaf1.
std::string withTables(std::string_view tables);

/// What `refusal(text)` says after the path `path`; all of it if it names another path.
std::string refusalBehind(std::string_view path, std::string_view text);

/// As `refusal`, for the document `withTables(tables)`, without the column and the path to the
/// tables. Expects the same tables to be refused in the same words in an advertised entry.
std::string tablesRefusal(std::string_view tables);

/// The tables of VNI 10 of leaf1 in the document `withTables(tables)`.
Vex::Ptr<VxlanController::VniStatusV2 const> mountedTables(std::string_view tables);

/// The advertised entry `name` of the mount, or null.
Vex::Ptr<VxlanController::VniFdbStatusV2 const> entryOf(state::Mount const & mount,
                                                        std::string_view name);

/// The switch `name` of the mount, or null.
Vex::Ptr<VxlanController::VniStatusDirV2 const> switchOf(state::Mount const & mount,
                                                         std::string_view name);

} // namespace vxshow::test
