#include "bench/floor/Output.h"
#include "bench/floor/Rows.h"

#include <unistd.h>

/// The compact JSON of `mac received`. Names are written unchanged: the measured ones need no
/// escapes.
namespace {

namespace floor = bench::floor;

void putRow(floor::Output & output, floor::Row const & row, bool first) {
    char * out = floor::append(output.room(), first ? R"({"macAddr":")" : R"(,{"macAddr":")");
    out = floor::append(floor::putMac(out, row.mac), R"(","vtepIp":")");
    out = floor::append(floor::putIp(out, row.vtep), R"(","moveCount":)");
    out = floor::putNumber(out, row.moves);
    *out++ = '}';
    output.end(out);
}

void putVni(floor::Output & output, floor::Rows const & rows, floor::Vni const & vni, bool first) {
    char * out = floor::append(output.room(), first ? "" : ",");
    out = floor::append(out, R"({"macAddress":"00:00:00:00:00:00","vni":)");
    output.end(floor::append(floor::putNumber(out, vni.number), R"(,"unicastHostTable":[)"));
    for (std::size_t r = vni.first; r < vni.first + vni.count; ++r) {
        putRow(output, rows.rows[r], r == vni.first);
    }
    output.put(R"(],"bumVtepListTable":[]})");
}

} // namespace

int main(int /* count */, char ** arguments) {
    auto const rows = floor::readRows(arguments[1]);
    floor::Output output;
    output.put(R"({"switches":{)");
    bool firstSwitch = true;
    for (auto const & source : rows.switches) {
        output.put(firstSwitch ? "\"" : ",\"");
        output.put(source.name);
        output.put(R"(":{"vniInDottedNotation":false,"vnis":[)");
        for (std::size_t v = source.firstVni; v < source.firstVni + source.vniCount; ++v) {
            putVni(output, rows, rows.vnis[v], v == source.firstVni);
        }
        output.put("]}");
        firstSwitch = false;
    }
    output.put("},\"nonSwitchSources\":{}}\n");
    output.flush();
    _exit(0);
}
