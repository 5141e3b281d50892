#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The floor: how fast the listing of received MAC addresses can be on this machine if it
/// does nothing else. No model, no collections, no filters and no checks: packed rows in
/// vectors, sorted in place, formatted by hand. It reads only the measured states, whose
/// switches have nothing but unicast tables, and has no other use.
namespace bench::floor {

/// One MAC address of one VNI.
struct Row {
    std::uint64_t mac;
    std::uint32_t vtep;
    std::uint32_t moves;
};

/// The rows of one VNI of one switch, sorted by MAC address.
struct Vni {
    std::uint32_t number;
    std::size_t first;
    std::size_t count;
};

struct Switch {
    std::string name;
    std::size_t firstVni;
    std::size_t vniCount;
};

/// All listed rows, in the order of the listing.
struct Rows {
    std::vector<Switch> switches;
    std::vector<Vni> vnis;
    std::vector<Row> rows;
};

/// Reads the snapshot at `path` with simdjson's on-demand parser, and sorts.
Rows readRows(char const * path);

} // namespace bench::floor
