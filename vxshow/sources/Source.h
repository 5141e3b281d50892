#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/sources/Merge.h"
#include "vxshow/sources/frr/VtyshCommand.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace vxshow::sources {

/// One source of a fabric, as its operator describes it.
struct Source {
    /// Names the source in messages. As a switch, it is also the name of an FRR source, and of
    /// whatever a database holds at a VTEP of no switch.
    std::string name;
    Role role = Role::switches;
    std::variant<ovsdb::DatabaseAddress, frr::VtyshCommand> access;
    /// The system identifier of the source's switch; of none when it holds several.
    std::optional<Nolt::EthAddr> systemId = {};
    /// The system identifiers of a database's switches by name, before the one above.
    std::map<std::string, Nolt::EthAddr> systemIds = {};
    /// Reading all of it may take so long.
    std::chrono::milliseconds timeLimit{5000};

    bool operator==(Source const &) const = default;
};

} // namespace vxshow::sources
