#include "vxshow/listing/JsonLines.h"

#include "outfmt/Interrupt.h"
#include "outfmt/Utf8.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vxshow::listing {

namespace {

constexpr CellStyle jsonStyle{};

bool needsNoEscape(char c) {
    auto const byte = static_cast<unsigned char>(c);
    return byte >= ' ' && byte < 0x80 && c != '"' && c != '\\';
}

/// Adds a character as it is written within a JSON string (RFC 8259, section 7).
void appendCharacter(std::string & text, std::string_view character) {
    constexpr std::string_view digits = "0123456789abcdef";
    auto const byte = static_cast<unsigned char>(character[0]);
    if (byte < ' ') {
        text.append("\\u00").append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
        return;
    }
    if (byte == '"' || byte == '\\') {
        text.push_back('\\');
    }
    text.append(character);
}

/// The text within its quotation marks.
std::string jsonText(std::string_view text) {
    std::string escaped;
    while (!text.empty()) {
        auto const sequence = outfmt::firstUtf8Sequence(text);
        auto const bytes = text.substr(0, sequence.length);
        if (sequence.valid) {
            appendCharacter(escaped, bytes);
        } else {
            for (char const byte : bytes) {
                escaped.push_back('\\');
                appendEscaped(escaped, byte);
            }
        }
        text.remove_prefix(sequence.length);
    }
    return escaped;
}

class JsonRows final : public RowSink {
public:
    JsonRows(outfmt::OutputBuffer & buffer, Shown const & shown)
        : buffer_(buffer), columns_(shown.columns) {
        start_.append(R"({"table":")").append(shown.table.name).append("\"");
        for (std::size_t const column : columns_) {
            auto const & [key, header, type] = shown.table.columns[column];
            bool const isText = type != Type::number && type != Type::vni;
            members_.push_back({",\"" + std::string(key) + "\":", isText});
        }
    }

    void row(Row cells) override {
        outfmt::checkInterrupt();
        buffer_.append(start_);
        for (std::size_t place = 0; place < columns_.size(); ++place) {
            auto const & [key, isText] = members_[place];
            buffer_.append(key);
            append(cells[columns_[place]], isText);
        }
        buffer_.append("}\n");
    }

private:
    struct Member {
        std::string key; ///< with the comma before it and the colon after it
        bool isText;     ///< whether its value is in quotation marks
    };

    void append(Cell const & cell, bool isText) {
        if (!isKnown(cell)) {
            buffer_.append("null");
            return;
        }
        if (isText) {
            buffer_.append('"');
        }
        if (auto const * text = std::get_if<std::string_view>(&cell)) {
            if (std::all_of(text->begin(), text->end(), needsNoEscape)) {
                buffer_.append(*text);
            } else {
                buffer_.append(jsonText(*text));
            }
        } else {
            appendValue(buffer_, cell, jsonStyle);
        }
        if (isText) {
            buffer_.append('"');
        }
    }

    outfmt::OutputBuffer & buffer_;
    std::span<std::size_t const> columns_;
    std::string start_;
    std::vector<Member> members_;
};

} // namespace

void writeJsonLines(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk) {
    JsonRows rows(buffer, shown);
    walk(rows);
}

} // namespace vxshow::listing
