#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/ovsdb/Request.h"
#include "vxshow/system/FileBytes.h"

#include <map>
#include <optional>
#include <string>

namespace vxshow::sources::ovsdb {

/// The server does not know a table or a column of the request: its schema is an older one.
class RequestRefused : public AnswerError {
public:
    using AnswerError::AnswerError;
};

/// What the one who names a `hardware_vtep` database tells of it.
struct DatabaseSource {
    /// Local entries at a VTEP of no switch stand under this name.
    std::string name;
    /// The system identifier of the database's switch; of none when it holds several.
    std::optional<Nolt::EthAddr> systemId = {};
    /// The system identifiers of its switches by name, before the one above.
    std::map<std::string, Nolt::EthAddr> systemIds = {};
};

/// Reads the answer to `request`, the bytes that `ovsdb-client query` prints. A request that
/// names logical switches was made for `vni`. Raises `AnswerError`, when the server has refused a
/// part of the request, too: nothing is taken from an answer that is not whole. Raises `TimedOut`
/// when much of it is left at the deadline. It fits unless the logical switches that the request
/// names are no longer those of the VNI: then facts are missing.
///
/// - The VNI of an entry is the tunnel_key of its logical switch, or of its locator when that
///   has none.
/// - A local entry belongs to each switch whose tunnel_ips hold the address of its locator:
///   several, when they share a VTEP. At an address of no switch it stands under the source's
///   name, since a listing that lacked it would be worse, and is noticed.
/// - What is wrong with the locators of a set is noticed once for the set, however many flood to
///   it.
/// - An entry without a MAC address, VTEP or VNI is left out and noticed. So is an ipaddr that
///   is no address, a router's port or route, each alone; and a router's port in a logical
///   switch without a key, of which no locator tells the VNI.
/// - `unknown-dst` is the flood list of the zero address. Moves, changes and preferences are
///   all 0, for nobody counts them here.
Answer readDatabase(system::FileBytes const & answer, Request const & request,
                    DatabaseSource const & source, std::optional<Vxlan::Vni> vni = {},
                    Deadline const & deadline = Deadline::never());

/// Reads the answer to `Request::survey()`, and gives the logical switches in which
/// entries of `vni` may be: those with that key, and those without any. Raises as
/// `readDatabase` does.
std::set<Uuid> logicalSwitchesOf(Vxlan::Vni vni, system::FileBytes const & surveyed,
                                 Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::ovsdb
