#pragma once

#include "Vex/Types.h"
#include "vxshow/listing/TableColumns.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vxshow::listing {

/// The forms that a listing's rows can be written in.
enum class Form : std::uint8_t {
    wide,      ///< aligned columns for people, nothing cut
    csv,       ///< RFC 4180; one table
    jsonLines, ///< one flat JSON object for each row, on a line of its own
};

/// What of a listing's rows is shown, as typed.
struct Choice {
    Form form = Form::wide;
    std::string table = {};                ///< the only table to show; empty for the form's own
    std::vector<std::string> columns = {}; ///< empty for all
    std::vector<std::string> sort = {};    ///< columns, each with a minus sign if descending
    std::optional<Vex::U32> top = {};      ///< the most rows of a table
    bool count = false;                    ///< whether to show the number of rows instead of them
    bool header = true;                    ///< of wide and CSV
};

/// A column that rows are sorted by.
struct SortKey {
    std::size_t column; ///< its place in the table
    bool descending;
};

/// What is shown of one table.
struct TablePlan {
    std::size_t table; ///< its place in the listing
    std::vector<std::size_t> columns;
    std::vector<SortKey> sort;
};

/// A choice that fits the listing.
struct Plan {
    Form form;
    std::vector<TablePlan> tables;
    std::optional<Vex::U32> top;
    bool count;
    bool header;
};

/// Why a choice does not fit: one line that names the option, what was typed and what is accepted.
struct Misfit {
    std::string line;
};

/// Finds the tables and columns of a choice in the listing.
///
/// A column is named by its key or its header, in upper or lower case. A table that lacks a column
/// that is named is not shown, and there must be one that has them all. CSV has one table, the
/// first of those that could be shown; the other forms have all of them.
std::variant<Plan, Misfit> planOf(Choice const & choice, Tables tables);

} // namespace vxshow::listing
