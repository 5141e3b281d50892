#pragma once

#include "Vex/Types.h"
#include "vxshow/state/SourceNames.h"
#include "vxshow/system/UtcTime.h"

#include <optional>
#include <string>
#include <vector>

/// Where a state comes from: it is kept beside the mounted state, and in snapshots.
namespace vxshow::state {

/// How much the answer of a source comes to. A number of entries fits: positions in an answer have
/// 32 bits.
struct SourceCounts {
    Vex::U32 switches = 0;
    Vex::U32 vnis = 0;           ///< on either side
    Vex::U32 localMacs = 0;      ///< places of MAC addresses that it has learned itself
    Vex::U32 remoteMacs = 0;     ///< places of those that it was told
    Vex::U32 floods = 0;         ///< targets in its flood lists, on both sides
    Vex::U32 localBindings = 0;  ///< IP addresses that it has learned itself
    Vex::U32 remoteBindings = 0; ///< those that it was told
    Vex::U32 routers = 0;
    Vex::U32 routes = 0;
    Vex::U32 leftOut = 0;   ///< unusable entries, which are in no listing
    Vex::U32 ipv6Vteps = 0; ///< entries whose VTEP is IPv6, which are in no listing
    Vex::U32 unplaced = 0;  ///< local entries at a VTEP of no switch
    Vex::U32 disputed = 0;  ///< IP addresses with several MAC addresses

    bool operator==(SourceCounts const &) const = default;
};

/// What became of one source.
struct SourceOrigin {
    std::string name;
    std::string kind; ///< as fabric files write it
    Role role = Role::switches;
    /// When the answer that is in the state was complete; nullopt: none is in it.
    std::optional<system::UtcTime> read = {};
    /// Why it could not be read this time: one printable line. Empty: it could. With `read`, its
    /// last good answer is in the state.
    std::string failure = {};
    std::string remarks = {}; ///< what was noticed in its content: one printable line, or empty
    SourceCounts counts = {}; ///< of the answer

    bool operator==(SourceOrigin const &) const = default;
};

struct Origin {
    system::UtcTime made;                   ///< when the state had been read
    std::string version;                    ///< of the program that read it
    std::vector<SourceOrigin> sources = {}; ///< in the order in which they were named

    bool operator==(Origin const &) const = default;
};

} // namespace vxshow::state
