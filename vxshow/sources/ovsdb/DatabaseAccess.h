#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/sources/Access.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"

#include <map>
#include <string>
#include <utility>

namespace vxshow::sources::ovsdb {

/// A `hardware_vtep` database as a source.
class DatabaseAccess final : public Access {
public:
    /// `systemIds` holds the system identifiers of the database's switches, by name. They take
    /// precedence over that of the source.
    explicit DatabaseAccess(DatabaseAddress address,
                            std::map<std::string, Nolt::EthAddr> systemIds = {})
        : address_(std::move(address)), systemIds_(std::move(systemIds)) {}

    DatabaseAddress const & address() const noexcept { return address_; }

    std::map<std::string, Nolt::EthAddr> const & systemIds() const noexcept { return systemIds_; }

    Answer ask(Source const & source, state::Selection const & selection,
               Deadline const & deadline) const override;

    state::Counters counters() const noexcept override {
        return {.moves = false, .changes = false, .preference = false};
    }

private:
    DatabaseAddress address_;
    std::map<std::string, Nolt::EthAddr> systemIds_;
};

} // namespace vxshow::sources::ovsdb
