#pragma once

#include "vxshow/sources/ovsdb/Database.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// Answers of `hardware_vtep` databases, written out in a test.
namespace vxshow::test {

/// The reference to the row `number` of a database that is written out here.
std::string row(unsigned number);

/// The rows of each table of a small database. At first there is the switch leaf1 with the VTEP
/// 10.0.0.1 and nothing learned; the logical switches red, 5001, which is row 1, and keyless,
/// row 2; the locators 10.0.0.1, row 11, 10.0.0.2, row 12, and 10.0.0.3 with the key 5003, row
/// 13; and the set of rows 11 and 12, row 21.
struct Database {
    Database();

    std::vector<std::string> & operator[](sources::ovsdb::Table table) {
        return rows[static_cast<std::size_t>(table)];
    }

    /// Adds a unicast row.
    Database & unicast(sources::ovsdb::Table table, std::string_view mac, unsigned logicalSwitch,
                       unsigned locator, std::string_view ip = "");

    /// Adds a multicast row.
    Database & multicast(sources::ovsdb::Table table, std::string_view mac, unsigned logicalSwitch,
                         unsigned locatorSet, std::string_view ip = "");

    /// The answer to the request for everything.
    std::string answer() const;

    std::array<std::vector<std::string>, 12> rows;
};

/// A name in quotes, with the escapes that JSON needs.
std::string jsonText(std::string_view text);

/// Reads an answer to the request for everything, from the source "lab".
sources::Answer readAnswer(std::string_view answer);
sources::Answer readAnswer(Database const & database);

/// The error for that answer; "accepted" if there is none. Expects it to be one line of
/// printable ASCII.
std::string answerError(std::string_view answer);

/// The file of that name among the captures of real databases.
std::string capture(std::string const & name);

} // namespace vxshow::test
