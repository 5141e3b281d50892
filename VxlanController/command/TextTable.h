#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

/// Text tables, each described once by its columns. Header lines and the format of a row are
/// composed from that description while compiling, so a row costs what it would with a format
/// written out by hand. All widths are in bytes.
namespace VxlanController::Cli {

/// How the cells of a column are printed. A cell that is wider than its column widens its row,
/// unless it is cut.
enum class Cell : std::uint8_t {
    text,       ///< left-aligned
    cutText,    ///< left-aligned, and cut to the column's width
    number,     ///< a signed number, right-aligned
    leftNumber, ///< a signed number, left-aligned
};

/// One column. The header can be wider or narrower than the rows.
struct Column {
    std::string_view title;
    unsigned width; ///< in rows
    Cell cell = Cell::text;
    unsigned headerWidth = width;

    consteval Column withHeaderWidth(unsigned other) const { return {title, width, cell, other}; }
};

/// A line or part of one, composed while compiling. One that is too long does not compile.
class Line {
public:
    constexpr Line() = default;

    constexpr Line & add(std::string_view text) {
        for (char const character : text) {
            text_.at(length_++) = character;
        }
        return *this;
    }

    constexpr Line & add(char character, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            text_.at(length_++) = character;
        }
        return *this;
    }

    constexpr Line & addNumber(unsigned number) {
        return number < 10 ? add(static_cast<char>('0' + number), 1)
                           : addNumber(number / 10).addNumber(number % 10);
    }

    constexpr operator std::string_view() const noexcept { return {text_.data(), length_}; }

private:
    std::array<char, 120> text_{};
    std::size_t length_ = 0;
};

/// The printf conversion of one cell.
consteval Line cellFormat(Column const & column) {
    Line format;
    format.add(column.cell == Cell::number ? "%" : "%-").addNumber(column.width);
    if (column.cell == Cell::cutText) {
        format.add(".").addNumber(column.width);
    }
    bool const isNumber = column.cell == Cell::number || column.cell == Cell::leftNumber;
    return format.add(isNumber ? "d" : "s");
}

/// The lines that one table is printed with. Columns are one blank apart.
struct TextTable {
    consteval TextTable(std::initializer_list<Column> columns) {
        for (Column const & column : columns) {
            if (width != 0) {
                paddedTitles.add(" ");
                underline.add(" ");
                cells.add(" ");
                ++width;
            }
            titles = Line(paddedTitles).add(column.title);
            paddedTitles.add(column.title).add(' ', column.headerWidth - column.title.size());
            underline.add('-', column.headerWidth);
            cells.add(cellFormat(column));
            width += column.headerWidth;
        }
        rule.add('-', width);
        row = Line(cells).add("\n");
    }

    Line titles;           ///< the last title without blanks after it
    Line paddedTitles;     ///< the last title filled up to the width of its column
    Line underline;        ///< dashes under each title
    Line rule;             ///< dashes as wide as the whole header
    Line cells;            ///< the format of a row, without its line end
    Line row;              ///< the format of a row with its line end
    std::size_t width = 0; ///< of the header
};

} // namespace VxlanController::Cli
