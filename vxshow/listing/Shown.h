#pragma once

#include "vxshow/listing/CellText.h"
#include "vxshow/listing/TableColumns.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

namespace vxshow::listing {

/// Passes all rows of a table to the sink, each time it is called, in the same order.
using Walk = std::function<void(RowSink &)>;

/// Where and how the forms are written.
struct Surface {
    bool isTerminal = false;
    /// How many columns the terminal has; nullopt if lines can be of any length.
    std::optional<std::size_t> width = {};
    bool dottedVni = false; ///< in wide; the other forms are for programs
};

/// What a form writes of one table.
struct Shown {
    Table const & table;
    std::span<std::size_t const> columns; ///< the places of those that are shown
    bool header;                          ///< whether wide and CSV have the line of the titles
    Surface surface;
};

} // namespace vxshow::listing
