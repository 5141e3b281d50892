#pragma once

#include <array>
#include <string_view>

namespace vxshow::state {

/// The role of a source in the fabric, which decides where its facts are mounted.
enum class Role {
    /// One or several switches. What they learned locally is received from each of them under
    /// its name; what they were told is advertised, in the entry of each VNI.
    switches,
    /// The hardware switch controller's database. What it was told of others is received from
    /// it (`received.sources`); what is local to it was advertised to it (`advertised.sources`).
    hsc,
    /// As `hsc`, but nothing is advertised to it.
    qvx,
    /// EVPN: as `hsc`, but in the shared tables (`received.evpn`, `advertised.evpn`).
    evpn,
};

/// The word for each role, in the order of `Role`, as fabric files write it.
inline constexpr std::array<std::string_view, 4> roleWords{"switch", "hsc", "qvx", "evpn"};

/// The names of the sources that are not switches: in a mount, in snapshots and in listings.
inline constexpr char const * hscName = "HSC";
inline constexpr char const * qvxName = "QVX";
inline constexpr char const * evpnName = "EVPN";

/// The name under which listings have what a source in `role` was told; empty for `switches`, each
/// of which has a name of its own.
constexpr char const * listedName(Role role) noexcept {
    switch (role) {
    case Role::hsc:
        return hscName;
    case Role::qvx:
        return qvxName;
    case Role::evpn:
        return evpnName;
    case Role::switches:
        break;
    }
    return "";
}

/// The words with which a listing is limited to sources: "all" is every switch, the others are the
/// sources that are not switches. A switch of such a name is asked for in another way.
inline constexpr std::array<std::string_view, 4> sourceWords{"all", "hsc", "qvx", "evpn"};

constexpr bool isSourceWord(std::string_view text) noexcept {
    for (std::string_view const word : sourceWords) {
        if (text == word) {
            return true;
        }
    }
    return false;
}

} // namespace vxshow::state
