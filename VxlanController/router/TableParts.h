#pragma once

#include "VxlanController/command/TextTable.h"
#include "outfmt/Printer.h"

#include <cstddef>

/// The parts that all tables of logical routers have in common.
namespace VxlanController::Cli {

/// Prints the titles between two rules. The line of the titles ends in blanks, as rows do.
inline void printHeader(outfmt::Printer & printer, TextTable const & table, Line const & rule) {
    printer.addFrills("%s\n%s\n%s\n", rule, table.paddedTitles, rule);
}

/// Prints the total below the rows. A count above 2147483647 shows as negative.
inline void printTotal(outfmt::Printer & printer, std::size_t entries) {
    printer.addFrills("\nTotal entries for this criterion: %d\n\n", static_cast<int>(entries));
}

} // namespace VxlanController::Cli
