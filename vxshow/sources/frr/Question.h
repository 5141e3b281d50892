#pragma once

#include "Nolt/EthAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/SourceNames.h"

#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// One command for zebra, the daemon that holds what a VTEP has learned and was told.
///
/// zebra builds the whole answer to a command before it sends any of it, and serves no one else
/// meanwhile: half a second for 100,000 MAC addresses, twice that with their details. So each
/// command asks only for what is needed.
struct Question {
    enum class Kind {
        evpn,            ///< the settings of EVPN; nothing if it is not active
        vnis,            ///< every VNI, with its addresses and flood list
        vni,             ///< one of them
        macs,            ///< of every VNI; from FRR 8.4, not which Ethernet segment one is behind
        macsOfVni,       ///< the same of one VNI
        macsInDetail,    ///< of every VNI, with the segments
        mac,             ///< one MAC address in one VNI, with its segment
        segments,        ///< the Ethernet segments and their VTEPs
        neighbours,      ///< the IP addresses of every VNI
        neighboursOfVni, ///< those of one
        vrfs,            ///< the VRFs that have an L3 VNI
        devices,         ///< the interfaces of every VRF
        deviceStates,    ///< which of them are up
        interfaces,      ///< of a VRF
        routes,          ///< IPv4, of a VRF
        routesIpv6,      ///< IPv6, of a VRF
    };

    Kind kind;
    Vxlan::Vni vni = {};
    Nolt::EthAddr mac = {};
    std::string vrf = {};

    /// Whether a version of zebra that does not know the command still answers enough. Such a
    /// question is the last one of a run, since that ends with a command that is not known.
    bool isOptional() const noexcept { return kind == Kind::deviceStates; }

    /// The text of the command.
    std::string command() const;

    bool operator==(Question const &) const = default;
};

/// Whether `name` can be a word of a command: it is printable ASCII, not empty, without blanks and
/// without `|`, after which vtysh expects a filter. Nor is it `all`, which stands for every VRF, or
/// an abbreviation of it: vtysh takes `a` and `al` for it, too. The system allows any name for a
/// VRF.
bool isVrfWord(std::string_view name) noexcept;

/// Whether one VNI alone is asked for, not all of them.
bool asksForOneVni(state::Selection const & selection);

/// The first questions for what is selected of a source of that role. Further ones depend on the
/// answers.
std::vector<Question> firstQuestions(state::Selection const & selection,
                                     state::Role role = state::Role::switches);

} // namespace vxshow::sources::frr
