#pragma once

#include "vxshow/state/Mount.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace vxshow::state {

/// How much one part of the tables holds.
struct TableCounts {
    std::string_view side;       ///< "received" or "advertised"
    std::string_view from;       ///< "switches", or the name of a source that is none
    std::uint64_t sources = 0;   ///< switches; 1 for a source that is none
    std::uint64_t vnis = 0;      ///< of each source
    std::uint64_t macs = 0;      ///< unicast ones that are behind one VTEP
    std::uint64_t multipath = 0; ///< those behind several
    std::uint64_t floods = 0;    ///< targets in the flood lists
    std::uint64_t bindings = 0;  ///< IP addresses

    bool operator==(TableCounts const &) const = default;
};

/// How much a mount holds.
struct StateCounts {
    std::vector<TableCounts> tables = {}; ///< only parts that are mounted
    std::uint64_t routers = 0;
    std::uint64_t ports = 0;
    std::uint64_t routes = 0;
    std::uint64_t routerSwitches = 0; ///< switches whose VTEPs are known

    bool operator==(StateCounts const &) const = default;
};

/// Throws `Pelo::CorruptionDetectedException` for a damaged shared table.
StateCounts countsOf(Mount const & mount);

} // namespace vxshow::state
