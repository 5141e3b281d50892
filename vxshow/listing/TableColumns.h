#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// What the listings consist of: tables, and the columns of their rows. Every form that has rows is
/// made from these descriptions.
namespace vxshow::listing {

/// What the cells of a column are. It decides how they are sorted, aligned and written in JSON.
enum class Type : std::uint8_t {
    text,    ///< a name: any bytes
    number,  ///< an unsigned number
    mac,     ///< a MAC address
    ip,      ///< an IP address
    network, ///< an IP address or prefix with its length
    vni,     ///< a VNI
};

/// One column. No two columns of a table have the same key or the same header.
struct Column {
    std::string_view key;    ///< in CSV and JSON, as the JSON documents name the attribute
    std::string_view header; ///< in wide, as the fixed text has it
    Type type;
};

/// One table of a listing: all of its rows have the same columns.
struct Table {
    std::string_view name;
    std::span<Column const> columns;
};

/// The tables of a listing, in the order in which they are shown. The first is the main one.
using Tables = std::span<Table const>;

} // namespace vxshow::listing
