#pragma once

#include <map>
#include <string>
#include <string_view>

/// Which counters a state has: not every kind of source keeps them all.
namespace vxshow::state {

/// The counters of entries that a source keeps. One that it does not keep is 0 in the mounted
/// tables, where there is no other value for it, and is not known.
struct Counters {
    bool moves = true;      ///< how often a MAC address has moved
    bool changes = true;    ///< how often the MAC address of an IP address has changed
    bool preference = true; ///< which binding of an IP address takes precedence

    bool areAllKept() const noexcept { return moves && changes && preference; }

    /// Keeps only what `other` keeps, too.
    void limitTo(Counters const & other) noexcept {
        moves = moves && other.moves;
        changes = changes && other.changes;
        preference = preference && other.preference;
    }

    bool operator==(Counters const &) const = default;
};

/// The counters of all tables that are mounted. Of several sources whose entries are in one table,
/// only what all of them keep is kept there: a 0 of the others cannot be told from one that was
/// counted.
struct KeptCounters {
    /// By name of the source, as listings have it. A source that is not here keeps all.
    std::map<std::string, Counters, std::less<>> received = {};
    /// Of what is advertised, which is one table whatever its sources.
    Counters advertised = {};

    Counters receivedFrom(std::string_view source) const {
        auto const found = received.find(source);
        return found == received.end() ? Counters() : found->second;
    }

    bool areAllKept() const noexcept { return received.empty() && advertised.areAllKept(); }

    bool operator==(KeptCounters const &) const = default;
};

} // namespace vxshow::state
