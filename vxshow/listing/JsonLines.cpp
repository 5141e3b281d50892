#include "vxshow/listing/JsonLines.h"

#include "outfmt/Utf8.h"
#include "vxshow/listing/DelimitedRows.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace vxshow::listing {

namespace {

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

void appendJsonName(std::string & text, std::string_view name) {
    if (std::all_of(name.begin(), name.end(), needsNoEscape)) {
        text.append(name);
        return;
    }
    while (!name.empty()) {
        auto const sequence = outfmt::firstUtf8Sequence(name);
        auto const bytes = name.substr(0, sequence.length);
        if (sequence.valid) {
            appendCharacter(text, bytes);
        } else {
            for (char const byte : bytes) {
                text.push_back('\\');
                appendEscaped(text, byte);
            }
        }
        name.remove_prefix(sequence.length);
    }
}

/// What stands around the cells: the members' names, and quotation marks where the value is text.
std::vector<Delimiters> membersOf(Shown const & shown) {
    std::vector<Delimiters> members;
    std::string start = R"({"table":")" + std::string(shown.table.name) + "\"";
    for (std::size_t const column : shown.columns) {
        auto const & [key, header, type] = shown.table.columns[column];
        bool const isText = type != Type::number && type != Type::vni;
        auto const member = std::exchange(start, "") + ",\"" + std::string(key) + "\":";
        std::string const quote = isText ? "\"" : "";
        members.push_back({member + quote, quote, member + "null"});
    }
    members.back().after.append("}\n");
    members.back().unknown.append("}\n");
    return members;
}

} // namespace

void writeJsonLines(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk) {
    auto members = membersOf(shown);
    DelimitedRows rows(buffer, shown.columns, std::move(members), appendJsonName);
    walk(rows);
}

} // namespace vxshow::listing
