#pragma once

#include "outfmt/OutputBuffer.h"
#include "vxshow/listing/Shown.h"
#include "vxshow/system/MemoryFile.h"

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

/// A table with a column of each kind, for the tests of the forms.
namespace vxshow::test {

inline constexpr std::array hostColumns{
    listing::Column{"name", "Name", listing::Type::text},
    listing::Column{"vni", "VNI", listing::Type::vni},
    listing::Column{"macAddr", "Mac Address", listing::Type::mac},
    listing::Column{"moveCount", "Moves", listing::Type::number},
    listing::Column{"ipAddress", "IP Address", listing::Type::ip},
};

inline constexpr listing::Table hosts{"hosts", hostColumns};

using Host = std::array<listing::Cell, hostColumns.size()>;

/// A host whose MAC address is 02:00:00:00:00:01.
inline Host host(std::string_view name, Vex::U32 vni = 10, listing::Cell moves = Vex::U64{0},
                 listing::Cell ip = {}) {
    return {name, Vxlan::Vni(vni), Nolt::EthAddr::ofValue(0x020000000001), moves, ip};
}

inline listing::Cell ipCell(std::string_view text) {
    return Nolt::IpGenAddr::fromString(text);
}

inline listing::Walk walkOver(std::vector<Host> rows) {
    return [rows](listing::RowSink & sink) {
        for (Host const & row : rows) {
            sink.row(row);
        }
    };
}

inline std::vector<std::size_t> const allHostColumns{0, 1, 2, 3, 4};

/// What one of the forms writes of these hosts.
template <class Write>
std::string written(Write && write, std::vector<Host> const & rows,
                    std::vector<std::size_t> const & columns = allHostColumns, bool header = true,
                    listing::Surface const & surface = {}) {
    system::MemoryFile file;
    outfmt::OutputBuffer buffer(file.descriptor(), outfmt::OutputBuffer::Parting::lineEnds);
    write(buffer, listing::Shown{hosts, columns, header, surface}, walkOver(rows));
    buffer.flush();
    auto const bytes = file.bytes();
    return std::string(bytes.text());
}

} // namespace vxshow::test
