#pragma once

#include "outfmt/Printer.h"

#include <cstddef>

/// What all tables of logical routers have.
namespace VxlanController::Cli {

/// The line above and below the header: 80 dashes.
inline constexpr char rule[] =
    "--------------------------------------------------------------------------------";

/// What stands below the rows. A count above 2147483647 shows negative.
inline void printTotal(outfmt::Printer & printer, std::size_t entries) {
    printer.addFrills("\nTotal entries for this criterion: %d\n\n", static_cast<int>(entries));
}

} // namespace VxlanController::Cli
