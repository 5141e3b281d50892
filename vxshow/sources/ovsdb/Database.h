#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/FactBudget.h"
#include "vxshow/sources/ovsdb/Request.h"
#include "vxshow/system/FileBytes.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace vxshow::sources::ovsdb {

/// The server does not know a table or a column of the request: its schema is older.
class RequestRefused : public AnswerError {
public:
    using AnswerError::AnswerError;
};

/// What the operator says of a `hardware_vtep` database.
struct DatabaseSource {
    /// Local entries at a VTEP of no switch are listed under this name.
    std::string name;
    /// The system identifier of the database's switch; of none if it holds several.
    std::optional<Nolt::EthAddr> systemId = {};
    /// The system identifiers of its switches, by name; these take precedence.
    std::map<std::string, Nolt::EthAddr> systemIds = {};
    /// The most facts that the database can come to.
    std::size_t maxFacts = defaultMaxFacts;
};

/// Reads the answer to `request`: the bytes that `ovsdb-client query` prints. A request that names
/// logical switches was made for `vni`. The answer does not fit if those are no longer the logical
/// switches of the VNI: then facts are missing. Raises `AnswerError`, also if the server has
/// refused a part of the request: nothing is taken from an incomplete answer. Raises `TimedOut` if
/// much of it is still unread at the deadline, and `TooManyFacts` before more facts are made than
/// the source can come to.
///
/// - The VNI of an entry is the tunnel_key of its logical switch, or of its locator if that has
///   none.
/// - A local entry belongs to each switch whose tunnel_ips contain the address of its locator:
///   to several, if they share a VTEP. At an address of no switch it is listed under the source's
///   name, since to leave it out would be worse, and counted as unplaced.
/// - What is wrong with the locators of a set is counted once for the set, however many rows
///   flood to it.
/// - An entry without a MAC address, VTEP or VNI is left out and counted. So are an invalid
///   ipaddr, and a router's port or route that is invalid, each by itself; and a router's port in
///   a logical switch without a key, since there is no locator that has the VNI.
/// - `unknown-dst` is the flood list of the zero address. Moves, changes and preferences are all
///   0: the database does not hold them.
Answer readDatabase(system::FileBytes const & answer, Request const & request,
                    DatabaseSource const & source, std::optional<Vxlan::Vni> vni = {},
                    Deadline const & deadline = Deadline::never());

/// Reads the answer to `Request::survey()`; returns the logical switches that can have entries of
/// `vni`: those with that key, and those without any. Raises as `readDatabase` does.
std::set<Uuid> logicalSwitchesOf(Vxlan::Vni vni, system::FileBytes const & surveyed,
                                 Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::ovsdb
