#include "vxshow/listing/Csv.h"

#include "outfmt/Interrupt.h"

namespace vxshow::listing {

namespace {

constexpr CellStyle csvStyle{};

void appendQuoted(outfmt::OutputBuffer & buffer, std::string_view text) {
    buffer.append('"');
    for (char const c : text) {
        if (c == '"') {
            buffer.append('"');
        }
        buffer.append(c);
    }
    buffer.append('"');
}

class CsvRows final : public RowSink {
public:
    CsvRows(outfmt::OutputBuffer & buffer, Shown const & shown)
        : buffer_(buffer), columns_(shown.columns),
          lineEnd_(shown.surface.isTerminal ? "\n" : "\r\n") {}

    void header(Table const & table) {
        bool isFirst = true;
        for (std::size_t const column : columns_) {
            separate(isFirst);
            buffer_.append(table.columns[column].key);
        }
        buffer_.append(lineEnd_);
    }

    void row(Row cells) override {
        outfmt::checkInterrupt();
        bool isFirst = true;
        for (std::size_t const column : columns_) {
            separate(isFirst);
            if (auto const * text = std::get_if<std::string_view>(&cells[column])) {
                appendText(*text);
            } else {
                appendValue(buffer_, cells[column], csvStyle);
            }
        }
        buffer_.append(lineEnd_);
    }

private:
    void separate(bool & isFirst) {
        if (!isFirst) {
            buffer_.append(',');
        }
        isFirst = false;
    }

    void appendText(std::string_view text) {
        if (text.empty() || text.find_first_of(",\"\r\n") != std::string_view::npos) {
            appendQuoted(buffer_, text);
        } else {
            buffer_.append(text);
        }
    }

    outfmt::OutputBuffer & buffer_;
    std::span<std::size_t const> columns_;
    std::string_view lineEnd_;
};

} // namespace

void writeCsv(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk) {
    CsvRows rows(buffer, shown);
    if (shown.header) {
        rows.header(shown.table);
    }
    walk(rows);
}

} // namespace vxshow::listing
