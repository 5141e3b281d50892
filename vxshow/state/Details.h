#pragma once

#include "Nolt/EthAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/state/EthernetSegment.h"

#include <compare>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// What sources know of their entries, and no cell of the fixed listings shows. It is kept beside
/// the mounted state.
namespace vxshow::state {

/// Of a MAC address in a VNI, as one source reports it.
struct MacDetails {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    bool isDuplicate =
        false;             ///< it moved too often: it was detected as a duplicate (RFC 7432, 15.1)
    bool isSticky = false; ///< it does not move: announced as static (RFC 7432, 15.2)
    bool isInactive = false;          ///< local to its segment, but not seen by this VTEP itself
    EthernetSegment segment = {};     ///< zero: it is behind none
    std::optional<Vex::U32> age = {}; ///< seconds since it was learned; nullopt: not reported

    /// Whether it says no more than that the address is there.
    bool isPlain() const noexcept {
        return !isDuplicate && !isSticky && !isInactive && segment.isZero() && !age;
    }

    auto operator<=>(MacDetails const &) const = default;
};

/// The name that a source has for a VNI, such as that of a logical switch.
struct VniName {
    Vxlan::Vni vni;
    std::string name;

    auto operator<=>(VniName const &) const = default;
};

/// An L3 VNI of a switch.
struct L3VniDetails {
    Vxlan::Vni vni;
    std::string vrf;
    bool isUp = false;

    auto operator<=>(L3VniDetails const &) const = default;
};

/// All of one source. Once it is settled, each list is sorted, without repetitions.
struct SourceDetails {
    std::vector<MacDetails> macs = {}; ///< none of them is plain
    std::vector<VniName> vniNames = {};
    std::vector<L3VniDetails> l3Vnis = {};

    /// Sorts each list and removes repetitions.
    void settle();

    /// Adds what `more` has; both are settled, and so is the result.
    void add(SourceDetails const & more);

    bool isEmpty() const noexcept { return macs.empty() && vniNames.empty() && l3Vnis.empty(); }

    bool operator==(SourceDetails const &) const = default;
};

/// By name of the source; none of them is empty.
using Details = std::map<std::string, SourceDetails>;

} // namespace vxshow::state
