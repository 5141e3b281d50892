#pragma once

#include "VxlanController/command/TextTable.h"

/// The columns that the received and the advertised MAC tables share.
namespace VxlanController::Cli {

inline constexpr Column vniColumn{.title = "VNI", .width = 11};

/// Two narrower in rows than in the header. Scripts cut the rows by these widths.
inline constexpr Column macColumn{.title = "Mac Address", .width = 15, .headerWidth = 17};

inline constexpr Column vtepColumn{.title = "VTEP", .width = 15};
inline constexpr Column movesColumn{.title = "Moves", .width = 5, .cell = Cell::number};

} // namespace VxlanController::Cli
