#include "vxshow/listing/DelimitedRows.h"

#include "outfmt/Interrupt.h"
#include "outfmt/ShortCopy.h"

#include <array>
#include <utility>

namespace vxshow::listing {

namespace {

char * copyText(char * out, std::string const & text) {
    return outfmt::detail::copyShort(out, text.data(), text.size());
}

} // namespace

DelimitedRows::DelimitedRows(outfmt::OutputBuffer & buffer, std::span<std::size_t const> columns,
                             std::vector<Delimiters> delimiters, AppendName appendName)
    : buffer_(buffer), appendName_(appendName) {
    for (std::size_t place = 0; place < columns.size(); ++place) {
        columns_.push_back({columns[place], std::move(delimiters[place])});
    }
}

void DelimitedRows::row(Row cells) {
    outfmt::checkInterrupt();
    for (Column & column : columns_) {
        Cell const & cell = cells[column.place];
        if (LastCell::canRepeat(cell)) {
            appendRepeating(column, cell);
        } else {
            appendValue(column, cell);
        }
    }
}

void DelimitedRows::appendRepeating(Column & column, Cell const & cell) {
    if (!column.last.is(cell)) {
        auto & text = column.last.startText(cell);
        text.assign(column.delimiters.before);
        if (auto const * name = std::get_if<std::string_view>(&cell)) {
            appendName_(text, *name);
        } else {
            std::array<char, maxValueLength> value;
            text.append(value.data(), writeValue(cell, value.data(), {}));
        }
        text.append(column.delimiters.after);
    }
    auto const & text = column.last.text();
    if (text.size() <= outfmt::OutputBuffer::maxReserve) {
        copyText(buffer_.reserve(text.size()), text);
        buffer_.commit(text.size());
    } else {
        buffer_.append(text);
    }
}

void DelimitedRows::appendValue(Column const & column, Cell const & cell) {
    auto const & [before, after, unknown] = column.delimiters;
    char * const out = buffer_.reserve(before.size() + maxValueLength + after.size());
    char * const end = isKnown(cell) ? copyText(writeValue(cell, copyText(out, before), {}), after)
                                     : copyText(out, unknown);
    buffer_.commit(static_cast<std::size_t>(end - out));
}

} // namespace vxshow::listing
