#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/sources/ovsdb/DatabaseSchema.h"
#include "vxshow/sources/ovsdb/Uuid.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vxshow::sources::ovsdb {

/// The tables of a `hardware_vtep` database that are read.
enum class Table {
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
std::string_view nameOf(Table table);

/// What of a database is asked for; by default everything.
struct Wanted {
    bool localMacs = true;  ///< the tables of what its switches have learned
    bool remoteMacs = true; ///< the tables of what they were told
    /// Of the MAC tables, only rows in these logical switches; nullopt: in all of them.
    std::optional<std::set<Uuid>> logicalSwitches = {};
    Nolt::EthAddr mac = {}; ///< of the MAC tables, only this address; zero: every one
};

/// The one transaction that reads a database: a select for each table, so that all of it is of
/// the same moment. An answer does not name its table; the request determines the order.
///
/// A server scans every row of a table for each select, but serializes only the rows that match,
/// which is nearly all of its work. So a listing of one VNI names that VNI's logical switches in
/// the selects of the MAC tables. To learn which rows those are takes an earlier query (`survey`),
/// and they can change after it: the answer shows whether it still fits (`Answer::fits`).
///
/// A MAC address is pushed down as well, in every spelling of it: the server compares text byte by
/// byte, a condition has no "or", and writers can use any case and separator. So there is a select
/// for each spelling: three separators, times two for each digit that is a letter. If that is more
/// than `mostPushed` selects of a table, the address is not pushed down: a request with only the
/// usual spellings could miss a row, and no answer would show that.
class Request {
public:
    /// Everything.
    static Request whole() { return of({}); }

    /// The logical switches alone.
    static Request survey();

    /// What is wanted, and possibly more. If all spellings of the address take more than
    /// `mostPushed` selects of a table, the request names none of them; if all logical switches
    /// do (times the spellings that are named), it names no logical switch. What `schema` lacks is
    /// not asked for.
    static Request of(Wanted const & wanted, DatabaseSchema const & schema = {});

    static constexpr std::size_t mostPushed = 48;

    /// The table of each select, by position.
    std::vector<Table> const & tables() const noexcept { return tables_; }

    /// The logical switches that the request names; nullopt if it reads all of them.
    std::optional<std::set<Uuid>> const & pushed() const noexcept { return pushed_; }

    /// The transaction on one line, as an argument of `ovsdb-client query`.
    std::string text() const;

private:
    /// The condition of a select; none: every row.
    struct Where {
        std::optional<Uuid> logicalSwitch = {};
        std::string mac = {}; ///< in one spelling; empty: any
    };

    static void addWheres(std::optional<Uuid> const & logicalSwitch,
                          std::vector<std::string> const & macs, std::vector<Where> & wheres);
    static std::string conditions(Where const & where);

    void add(Table table, Where where);

    bool asksForLocatorKey_ = true;
    std::vector<Table> tables_;
    std::vector<Where> where_; ///< by position
    std::optional<std::set<Uuid>> pushed_;
};

} // namespace vxshow::sources::ovsdb
