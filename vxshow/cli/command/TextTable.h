#pragma once

#include "outfmt/Printer.h"

#include <string>
#include <vector>

namespace vxshow::cli::command {

/// A table for a person: a line of titles, and rows below it. Each column is as wide as the widest
/// of its cells, and two blanks separate them. Cells are printable ASCII.
class TextTable {
public:
    enum class Alignment : bool { left, right };

    struct Column {
        std::string title;
        Alignment alignment = Alignment::left;
    };

    explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// Adds a row; it has a cell for each column.
    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    void print(outfmt::Printer & printer) const;

private:
    using Widths = std::vector<std::size_t>;

    std::string line(std::vector<std::string> const & cells, Widths const & widths) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace vxshow::cli::command
