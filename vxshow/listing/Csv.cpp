#include "vxshow/listing/Csv.h"

#include "vxshow/listing/DelimitedRows.h"

#include <string>
#include <utility>
#include <vector>

namespace vxshow::listing {

namespace {

void appendCsvName(std::string & text, std::string_view name) {
    if (!name.empty() && name.find_first_of(",\"\r\n") == std::string_view::npos) {
        text.append(name);
        return;
    }
    text.push_back('"');
    for (char const c : name) {
        text.append(c == '"' ? 2 : 1, c);
    }
    text.push_back('"');
}

} // namespace

void writeCsv(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk) {
    std::string_view const lineEnd = shown.surface.isTerminal ? "\n" : "\r\n";
    std::vector<Delimiters> delimiters;
    std::string header;
    for (std::size_t const column : shown.columns) {
        std::string const before = delimiters.empty() ? "" : ",";
        delimiters.push_back({before, "", before});
        header.append(before).append(shown.table.columns[column].key);
    }
    delimiters.back().after.append(lineEnd);
    delimiters.back().unknown.append(lineEnd);
    if (shown.header) {
        buffer.append(header.append(lineEnd));
    }
    DelimitedRows rows(buffer, shown.columns, std::move(delimiters), appendCsvName);
    walk(rows);
}

} // namespace vxshow::listing
