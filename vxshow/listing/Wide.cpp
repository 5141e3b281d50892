#include "vxshow/listing/Wide.h"

#include "outfmt/Interrupt.h"
#include "vxshow/terminal/ShownCharacter.h"
#include "vxshow/terminal/TerminalText.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace vxshow::listing {

namespace {

constexpr std::size_t gap = 2;    ///< blanks between two columns
constexpr std::size_t indent = 4; ///< blanks before a line that continues a row

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

/// What both passes over the rows need.
class WideRows : public RowSink {
public:
    explicit WideRows(Shown const & shown)
        : shown_(shown),
          names_(shown.columns.size()), style_{.displayMac = true,
                                               .dottedVni = shown.surface.dottedVni} {}

protected:
    /// What is shown in the cell: a plain name is where it was, another one in `names_`, and
    /// anything else is written to `value_`.
    struct Text {
        std::string_view bytes;
        std::size_t columns;
    };

    Text textOf(Cell const & cell, std::size_t place) {
        if (auto const * name = std::get_if<std::string_view>(&cell)) {
            if (isPlain(*name)) {
                return {*name, name->size()};
            }
            names_[place].take(*name, width_);
            return {names_[place].text(), names_[place].columns()};
        }
        if (!isKnown(cell)) {
            return {"-", 1};
        }
        auto const length =
            static_cast<std::size_t>(writeValue(cell, value_.data(), style_) - value_.data());
        return {{value_.data(), length}, length};
    }

    Shown const & shown_;
    std::vector<ShownName> names_;

private:
    CellStyle style_;
    terminal::CharacterWidth width_;
    std::array<char, maxValueLength> value_{};
};

/// The first pass: how wide the columns are.
class WideWidths final : public WideRows {
public:
    explicit WideWidths(Shown const & shown) : WideRows(shown) {
        for (std::size_t const column : shown.columns) {
            widths_.push_back(shown.header ? shown.table.columns[column].header.size() : 0);
        }
    }

    void row(Row cells) override {
        outfmt::checkInterrupt();
        for (std::size_t place = 0; place < widths_.size(); ++place) {
            Cell const & cell = cells[shown_.columns[place]];
            auto & width = widths_[place];
            // Few cells can widen a column that is as wide as such values get.
            if (width < longest(cell)) {
                width = std::max(width, textOf(cell, place).columns);
            }
        }
    }

    std::vector<std::size_t> const & widths() const { return widths_; }

private:
    static std::size_t longest(Cell const & cell) {
        if (std::holds_alternative<Nolt::EthAddr>(cell)) {
            return Nolt::EthAddr::maxDisplayLength;
        }
        if (std::holds_alternative<Nolt::IpAddr>(cell)) {
            return Nolt::IpAddr::maxTextLength;
        }
        return std::string_view::npos;
    }

    std::vector<std::size_t> widths_;
};

/// Where the cells of every row stand.
struct Layout {
    struct Place {
        std::size_t width;
        bool right;      ///< whether the cell is aligned to the right
        bool startsLine; ///< whether the row continues on another line here
        bool endsLine;   ///< whether nothing follows on the line
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
        layout.places.push_back({widths[place], right, startsLine, place + 1 == widths.size()});
    }
    return layout;
}

/// The second pass.
class WideWriter final : public WideRows {
public:
    WideWriter(outfmt::OutputBuffer & buffer, Shown const & shown, Layout const & layout)
        : WideRows(shown), buffer_(buffer), layout_(layout) {}

    void header() {
        for (std::size_t place = 0; place < names_.size(); ++place) {
            auto const title = shown_.table.columns[shown_.columns[place]].header;
            append({title, title.size()}, place);
        }
    }

    void row(Row cells) override {
        outfmt::checkInterrupt();
        for (std::size_t place = 0; place < names_.size(); ++place) {
            append(textOf(cells[shown_.columns[place]], place), place);
        }
    }

private:
    void append(Text const & text, std::size_t place) {
        auto const & [width, right, startsLine, endsLine] = layout_.places[place];
        if (startsLine) {
            buffer_.fill(' ', indent);
        } else if (place != 0) {
            buffer_.fill(' ', gap);
        }
        auto const blanks = width - std::min(width, text.columns);
        if (right) {
            buffer_.fill(' ', blanks);
        }
        buffer_.append(text.bytes);
        if (endsLine) {
            buffer_.append('\n');
        } else if (!right) {
            buffer_.fill(' ', blanks);
        }
    }

    outfmt::OutputBuffer & buffer_;
    Layout const & layout_;
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
