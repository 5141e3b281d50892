#pragma once

#include "VxlanController/command/TextTable.h"

/// The columns of the two ARP tables.
namespace VxlanController::Cli {

inline constexpr Column switchColumn{.title = "Switch", .width = 19, .cell = Cell::cutText};
inline constexpr Column arpVniColumn{.title = "VNI", .width = 8};
inline constexpr Column ipColumn{.title = "IP Address", .width = 15, .cell = Cell::cutText};
inline constexpr Column arpMacColumn{.title = "MAC Address", .width = 18, .cell = Cell::cutText};
inline constexpr Column changesColumn{.title = "Changes", .width = 9, .cell = Cell::leftNumber};

/// The advertised header has one dash less. Scripts find the columns of either table by its
/// dashes.
inline constexpr Column advertisedChangesColumn =
    changesColumn.withHeaderWidth(changesColumn.width - 1);

inline constexpr TextTable receivedArpTable{switchColumn, arpVniColumn, ipColumn, arpMacColumn,
                                            changesColumn};
inline constexpr TextTable advertisedArpTable{arpVniColumn, ipColumn, arpMacColumn,
                                              advertisedChangesColumn};

} // namespace VxlanController::Cli
