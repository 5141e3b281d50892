#pragma once

#include "Nolt/EthAddr.h"
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

/// What of a database is asked for; at first everything.
struct Wanted {
    bool localMacs = true;  ///< the tables of what its switches have learned
    bool remoteMacs = true; ///< the tables of what they were told
    /// Of the MAC tables, only what is in these logical switches; nothing: in all of them.
    std::optional<std::set<Uuid>> logicalSwitches = {};
    Nolt::EthAddr mac = {}; ///< of the MAC tables, only this address; zero: every one
};

/// The one transaction that reads a database: a select for each table, so that all of it is of
/// one moment. An answer names no table, so what stands where in it is known from its request.
///
/// A server scans each row of a table for every select, but builds only those that it answers,
/// and building is nearly all of its work. So a listing of one VNI names that VNI's logical
/// switches in the selects of the MAC tables. Which rows those are takes a query before
/// (`survey`), after which they may change: the answer tells whether it still fits
/// (`Answer::fits`).
///
/// A MAC address is pushed down as well, in every spelling that is read as it: the server
/// compares text byte by byte, no condition can say "either of these", and nobody keeps writers
/// to one case or one separator. So there is a select for each spelling, three separators times
/// two for each digit that is a letter. An address with so many letters that this would be more
/// than `mostPushed` selects of a table is not pushed, since a request that names only the
/// usual spellings would now and then miss a row, and no answer would show that.
class Request {
public:
    /// Everything.
    static Request whole() { return of({}); }

    /// The logical switches alone.
    static Request survey();

    /// What is wanted, and maybe more: where `mostPushed` selects of a table are too few to
    /// name all spellings of the address, none is named, and where they are too few for all
    /// logical switches, with each spelling that is, no logical switch is.
    static Request of(Wanted const & wanted);

    static constexpr std::size_t mostPushed = 48;

    /// By position, the table of each select.
    std::vector<Table> const & tables() const noexcept { return tables_; }

    /// The logical switches that are named; nothing when none is, and all are read.
    std::optional<std::set<Uuid>> const & pushed() const noexcept { return pushed_; }

    /// The transaction, as one argument of `ovsdb-client query`. On one line.
    std::string text() const;

private:
    /// The condition of a select; none: every row.
    struct Where {
        std::optional<Uuid> logicalSwitch = {};
        std::string mac = {}; ///< as it is spelt; empty: any
    };

    static void addWheres(std::optional<Uuid> const & logicalSwitch,
                          std::vector<std::string> const & macs, std::vector<Where> & wheres);
    static std::string conditions(Where const & where);

    void add(Table table, Where where);

    std::vector<Table> tables_;
    std::vector<Where> where_; ///< by position
    std::optional<std::set<Uuid>> pushed_;
};

} // namespace vxshow::sources::ovsdb
