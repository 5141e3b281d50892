#pragma once

#include "vxshow/mount/HardwareVtepValues.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vxshow {

/// The tables of a `hardware_vtep` database that are read.
enum class HardwareVtepTable {
    logicalSwitch,
    physicalLocator,
    physicalLocatorSet,
    physicalSwitch,
    physicalPort,
    logicalRouter,
    arpSourcesLocal,
    arpSourcesRemote,
    mcastMacsLocal,
    mcastMacsRemote,
    ucastMacsLocal,
    ucastMacsRemote,
};

/// The table's name in the schema.
std::string_view nameOf(HardwareVtepTable table);

/// The one transaction that reads a database: a select for each table, so that all of it is of
/// one moment. An answer names no table, so what stands where in it is known from its request.
///
/// A server scans each row of a table for every select, but builds only those that it answers,
/// and building is nearly all of its work. So a listing of one VNI names that VNI's logical
/// switches in the selects of the MAC tables. Which rows those are takes a query before
/// (`survey`), after which they may change: the answer tells whether it still fits
/// (`HardwareVtepAnswer::fits`).
///
/// A MAC address is not pushed down. The server compares text byte by byte, no condition can
/// say "either of these", and an address may stand there in any mixture of upper and lower
/// case with three kinds of separators: a request that names the usual spellings would now and
/// then answer without a row that is there, and no answer would show that.
class HardwareVtepRequest {
public:
    /// Everything.
    static HardwareVtepRequest whole();

    /// The logical switches alone.
    static HardwareVtepRequest survey();

    /// Everything, but of the MAC tables only what is in these logical switches: a select for
    /// each of them, so for more than `mostPushed` it is the whole.
    static HardwareVtepRequest of(std::set<ovsdb::Uuid> const & logicalSwitches);

    static constexpr std::size_t mostPushed = 32;

    /// By position, the table of each select.
    std::vector<HardwareVtepTable> const & tables() const noexcept { return tables_; }

    /// The logical switches that are named; nothing when none is, and all are read.
    std::optional<std::set<ovsdb::Uuid>> const & pushed() const noexcept { return pushed_; }

    /// The transaction, as one argument of `ovsdb-client query`. On one line.
    std::string text() const;

private:
    std::vector<HardwareVtepTable> tables_;
    std::vector<std::optional<ovsdb::Uuid>> where_; ///< by position
    std::optional<std::set<ovsdb::Uuid>> pushed_;
};

} // namespace vxshow
