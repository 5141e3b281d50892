#include "bench/floor/Output.h"
#include "bench/floor/Rows.h"

#include <cstring>
#include <string>
#include <unistd.h>

/// The text of `mac received`.
namespace {

namespace floor = bench::floor;

/// Pads with spaces up to `column`, and adds one more.
char * padded(char * begin, char * end, std::size_t column) {
    auto const length = static_cast<std::size_t>(end - begin);
    std::size_t const blanks = (length < column ? column - length : 0) + 1;
    std::memset(end, ' ', blanks);
    return end + blanks;
}

void putRow(floor::Output & output, std::string_view front, floor::Row const & row) {
    char * out = floor::append(output.room(), front);
    out = padded(out, floor::putDisplayMac(out, row.mac), 15);
    out = padded(out, floor::putIp(out, row.vtep), 15);
    char number[10];
    auto const length = static_cast<std::size_t>(floor::putNumber(number, row.moves) - number);
    std::size_t const blanks = length < 5 ? 5 - length : 0;
    std::memset(out, ' ', blanks);
    out = floor::append(out + blanks, {number, length});
    *out++ = '\n';
    output.end(out);
}

void putTotal(floor::Output & output, std::size_t total) {
    output.put("Total Mac Addresses for this criterion: " + std::to_string(total) + "\n\n");
}

constexpr std::string_view rule =
    "---------------------------------------------------------------------\n\n";

} // namespace

int main(int /* count */, char ** arguments) {
    auto const rows = floor::readRows(arguments[1]);
    floor::Output output;
    output.put("         Received Mac Address Table\n");
    output.put(rule);
    output.put("Source            VNI         Mac Address       VTEP            Moves\n"
               "----------------- ----------- ----------------- --------------- -----\n");
    for (auto const & source : rows.switches) {
        for (std::size_t v = source.firstVni; v < source.firstVni + source.vniCount; ++v) {
            auto const & vni = rows.vnis[v];
            char front[4096];
            char * end = padded(front, floor::append(front, source.name), 17);
            end = padded(end, floor::putNumber(end, vni.number), 11);
            std::string_view const cells(front, static_cast<std::size_t>(end - front));
            for (std::size_t r = vni.first; r < vni.first + vni.count; ++r) {
                putRow(output, cells, rows.rows[r]);
            }
        }
    }
    putTotal(output, rows.rows.size());
    output.put("         Received Flood Table\n");
    output.put(rule);
    output.put("Source            VNI         Mac Address       VTEP\n"
               "----------------- ----------- ----------------- ---------------------\n");
    output.put("Total Mac Addresses for this criterion: 0\n");
    output.flush();
    _exit(0);
}
