#pragma once

namespace VxlanController::Cli {

/// The line above and below the header of every logical-router table: 80 dashes.
inline constexpr char rule[] =
    "--------------------------------------------------------------------------------";

} // namespace VxlanController::Cli
