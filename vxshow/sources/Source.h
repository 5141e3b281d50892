#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/sources/FactBudget.h"
#include "vxshow/state/SourceNames.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace vxshow::sources {

class Access;

/// What sets the time limits of a fabric file, for messages.
inline constexpr std::string_view fabricTimeLimit = "time_limit in the fabric file";

using state::Role;

/// One source of a fabric, as its operator describes it.
struct Source {
    /// Names the source in messages. A source that is one switch is that switch's name; of a
    /// database, it is where local entries go that belong to none of its switches.
    std::string name;
    Role role = Role::switches;
    std::shared_ptr<Access const> access; ///< not null
    std::string kind = {};                ///< as fabric files write it
    /// The system identifier of the source's switch; of none if it holds several.
    std::optional<Nolt::EthAddr> systemId = {};
    /// The most time that reading all of it can take.
    std::chrono::milliseconds timeLimit{5000};
    std::string_view timeLimitSetBy = fabricTimeLimit; ///< the option or the key: a constant
    /// The most facts that it can come to, at least 1 (see `FactBudget`).
    std::size_t maxFacts = defaultMaxFacts;
};

} // namespace vxshow::sources
