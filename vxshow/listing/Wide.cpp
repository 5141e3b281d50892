#include "vxshow/listing/Wide.h"

#include "outfmt/Interrupt.h"
#include "vxshow/terminal/ShownCharacter.h"
#include "vxshow/terminal/TerminalText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace vxshow::listing {

namespace {

constexpr std::size_t gap = 2;    ///< blanks between two columns
constexpr std::size_t indent = 4; ///< blanks before a line that continues a row

constexpr std::string_view unknown = "-";

CellStyle styleOf(Shown const & shown) {
    return {.displayMac = true, .dottedVni = shown.surface.dottedVni};
}

/// Whether a name is shown as it is, with a column for each byte. Nearly all are.
bool isPlain(std::string_view name) {
    return !name.empty() &&
           std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c < 0x7f; });
}

/// A name as it is shown, and how many columns of a terminal it takes.
class ShownName {
public:
    /// Of the next name. Rows that follow each other often have the same one, which is not made
    /// twice: it is recognised by its place in memory.
    void take(std::string_view name, terminal::CharacterWidth const & width) {
        if (name.data() == name_.data() && name.size() == name_.size() && !text_.empty()) {
            return;
        }
        name_ = name;
        text_.clear();
        columns_ = 0;
        if (name.empty()) {
            text_ = "\"\"";
            columns_ = text_.size();
        }
        while (!name.empty()) {
            auto const next = terminal::firstCharacter(name);
            auto const bytes = name.substr(0, next.length);
            addCharacter(bytes, next.shown == bytes, width);
            name.remove_prefix(next.length);
        }
    }

    std::string_view text() const { return text_; }

    std::size_t columns() const { return columns_; }

private:
    void addCharacter(std::string_view bytes, bool isShown,
                      terminal::CharacterWidth const & width) {
        if (isShown) {
            text_.append(bytes);
            columns_ += width.of(bytes);
            return;
        }
        for (char const byte : bytes) {
            auto const before = text_.size();
            appendEscaped(text_, byte);
            columns_ += text_.size() - before;
        }
    }

    std::string_view name_;
    std::string text_;
    std::size_t columns_ = 0;
};

/// Decimal digits.
std::size_t lengthOf(Vex::U64 number) {
    std::size_t length = 1;
    for (; number >= 10; number /= 10) {
        ++length;
    }
    return length;
}

std::size_t lengthOf(Nolt::IpAddr ip) {
    std::size_t length = 7; // four digits and three dots
    for (unsigned shift = 0; shift < 32; shift += 8) {
        auto const octet = ip.value() >> shift & 0xFF;
        length += (octet > 9) + (octet > 99);
    }
    return length;
}

/// The first pass: how wide the columns are.
class WideWidths final : public RowSink {
public:
    explicit WideWidths(Shown const & shown) : style_(styleOf(shown)) {
        for (std::size_t const column : shown.columns) {
            auto const title = shown.table.columns[column].header;
            columns_.push_back({column, shown.header ? title.size() : 0});
        }
    }

    void row(Row cells) override {
        outfmt::checkInterrupt();
        for (Column & column : columns_) {
            Cell const & cell = cells[column.place];
            if (LastCell::canRepeat(cell)) {
                if (!column.last.is(cell)) {
                    column.last.startText(cell);
                    column.width = std::max(column.width, widthOf(cell, column.name));
                }
            } else if (auto const * number = std::get_if<Vex::U64>(&cell)) {
                column.greatest = std::max(column.greatest, *number);
                column.width = std::max<std::size_t>(column.width, 1);
            } else {
                column.width = std::max(column.width, widthOf(cell, column.name));
            }
        }
    }

    std::vector<std::size_t> widths() const {
        std::vector<std::size_t> widths;
        for (Column const & column : columns_) {
            widths.push_back(
                std::max(column.width, column.greatest ? lengthOf(column.greatest) : 0));
        }
        return widths;
    }

private:
    struct Column {
        std::size_t place;
        std::size_t width;
        Vex::U64 greatest = 0; ///< of the numbers, whose width need not be known one by one
        LastCell last = {};
        ShownName name = {};
    };

    std::size_t widthOf(Cell const & cell, ShownName & shownName) const {
        if (std::holds_alternative<Nolt::EthAddr>(cell)) {
            return Nolt::EthAddr::maxDisplayLength;
        }
        if (auto const * ip = std::get_if<Nolt::IpAddr>(&cell)) {
            return lengthOf(*ip);
        }
        if (auto const * name = std::get_if<std::string_view>(&cell)) {
            if (isPlain(*name)) {
                return name->size();
            }
            shownName.take(*name, width_);
            return shownName.columns();
        }
        std::array<char, maxValueLength> value;
        auto const length = writeValue(cell, value.data(), style_) - value.data();
        return isKnown(cell) ? static_cast<std::size_t>(length) : unknown.size();
    }

    CellStyle style_;
    terminal::CharacterWidth width_;
    std::vector<Column> columns_;
};

/// Where the cells of every row stand.
struct Layout {
    struct Place {
        std::size_t blanksBefore; ///< that part it from the cell before it, or indent it
        std::size_t width;
        bool right;    ///< whether the cell is aligned to the right
        bool endsLine; ///< whether nothing follows on the line
    };

    std::vector<Place> places;
};

Layout layoutOf(Shown const & shown, std::vector<std::size_t> const & widths) {
    auto const room = shown.surface.width.value_or(std::string_view::npos);
    Layout layout;
    std::size_t used = 0;
    for (std::size_t place = 0; place < widths.size(); ++place) {
        bool const startsLine = place != 0 && used + gap + widths[place] > room;
        if (startsLine) {
            layout.places.back().endsLine = true;
        }
        used = place == 0 ? widths[place] : (startsLine ? indent : used + gap) + widths[place];
        bool const right = shown.table.columns[shown.columns[place]].type == Type::number;
        auto const before = place == 0 ? 0 : startsLine ? indent : gap;
        layout.places.push_back({before, widths[place], right, place + 1 == widths.size()});
    }
    return layout;
}

/// Writes `count` blanks, at most 48, which is more than any value needs. Writes 48 in any case,
/// for that takes less time.
char * writeBlanks(char * out, std::size_t count) {
    constexpr std::string_view blanks = "                                                ";
    static_assert(blanks.size() == 48 && blanks.size() > maxValueLength);
    std::memcpy(out, blanks.data(), blanks.size());
    return out + count;
}

/// The second pass.
class WideWriter final : public RowSink {
public:
    WideWriter(outfmt::OutputBuffer & buffer, Shown const & shown, Layout const & layout)
        : buffer_(buffer), shown_(shown), layout_(layout), style_(styleOf(shown)),
          names_(shown.columns.size()) {}

    void header() {
        for (std::size_t place = 0; place < names_.size(); ++place) {
            auto const title = shown_.table.columns[shown_.columns[place]].header;
            text_.clear();
            appendPadded(text_, title, title.size(), layout_.places[place]);
            buffer_.append(text_);
        }
    }

    void row(Row cells) override {
        outfmt::checkInterrupt();
        for (std::size_t place = 0; place < names_.size(); ++place) {
            Cell const & cell = cells[shown_.columns[place]];
            auto const & layout = layout_.places[place];
            if (auto const * name = std::get_if<std::string_view>(&cell)) {
                appendName(names_[place], *name, layout);
            } else if (!isKnown(cell)) {
                text_.clear();
                appendPadded(text_, unknown, unknown.size(), layout);
                buffer_.append(text_);
            } else {
                appendValue(cell, layout);
            }
        }
    }

private:
    struct Name {
        LastCell last = {}; ///< with the blanks around it
        ShownName shown = {};
    };

    void appendName(Name & column, std::string_view name, Layout::Place const & layout) {
        if (!column.last.is(name)) {
            auto & text = column.last.startText(name);
            text.clear();
            if (isPlain(name)) {
                appendPadded(text, name, name.size(), layout);
            } else {
                column.shown.take(name, width_);
                appendPadded(text, column.shown.text(), column.shown.columns(), layout);
            }
        }
        buffer_.append(column.last.text());
    }

    static void appendPadded(std::string & text, std::string_view shown, std::size_t columns,
                             Layout::Place const & layout) {
        auto const blanks = layout.width - std::min(layout.width, columns);
        text.append(layout.blanksBefore + (layout.right ? blanks : 0), ' ');
        text.append(shown);
        if (layout.endsLine) {
            text.push_back('\n');
        } else if (!layout.right) {
            text.append(blanks, ' ');
        }
    }

    void appendValue(Cell const & cell, Layout::Place const & layout) {
        // The blanks before it, the value, and those after it.
        constexpr std::size_t room = 256;
        char * const out = buffer_.reserve(room);
        char * end = writeBlanks(out, layout.blanksBefore);
        char * const start = end;
        end = writeValue(cell, end, style_);
        auto const length = static_cast<std::size_t>(end - start);
        auto const blanks = layout.width - std::min(layout.width, length);
        if (layout.right) {
            std::array<char, maxValueLength> value;
            std::copy(start, end, value.begin());
            end = std::copy_n(value.begin(), length, writeBlanks(start, blanks));
        }
        if (layout.endsLine) {
            *end++ = '\n';
        } else if (!layout.right) {
            end = writeBlanks(end, blanks);
        }
        buffer_.commit(static_cast<std::size_t>(end - out));
    }

    outfmt::OutputBuffer & buffer_;
    Shown const & shown_;
    Layout const & layout_;
    CellStyle style_;
    terminal::CharacterWidth width_;
    std::vector<Name> names_;
    std::string text_;
};

} // namespace

void writeWide(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk) {
    WideWidths widths(shown);
    walk(widths);
    auto const layout = layoutOf(shown, widths.widths());
    WideWriter writer(buffer, shown, layout);
    if (shown.header) {
        writer.header();
    }
    walk(writer);
}

} // namespace vxshow::listing
