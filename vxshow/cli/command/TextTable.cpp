#include "vxshow/cli/command/TextTable.h"

#include <algorithm>

namespace vxshow::cli::command {

std::string TextTable::line(std::vector<std::string> const & cells, Widths const & widths) const {
    std::string text;
    for (std::size_t index = 0; index < cells.size(); ++index) {
        std::string const padding(widths[index] - cells[index].size(), ' ');
        bool const isLeft = columns_[index].alignment == Alignment::left;
        text.append(index == 0 ? "" : "  ");
        text.append(isLeft ? cells[index] + padding : padding + cells[index]);
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

void TextTable::print(outfmt::Printer & printer) const {
    std::vector<std::string> titles;
    Widths widths;
    for (Column const & column : columns_) {
        titles.push_back(column.title);
        widths.push_back(column.title.size());
    }
    for (auto const & row : rows_) {
        for (std::size_t index = 0; index < row.size(); ++index) {
            widths[index] = std::max(widths[index], row[index].size());
        }
    }
    printer.addFrills("%s\n", line(titles, widths));
    for (auto const & row : rows_) {
        printer.addFrills("%s\n", line(row, widths));
    }
}

} // namespace vxshow::cli::command
