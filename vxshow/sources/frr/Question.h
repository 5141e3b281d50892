#pragma once

#include "Nolt/EthAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/state/Selection.h"

#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// One command of zebra, the daemon that holds what a VTEP has learned and was told.
///
/// zebra builds the whole answer to a command before it sends any of it, and answers nobody
/// else meanwhile: half a second for 100,000 MAC addresses, twice that with their details.
/// So each command asks for what is needed and no more.
struct Question {
    enum class Kind {
        vnis,            ///< every VNI, with its addresses and flood list
        vni,             ///< one of them
        macs,            ///< of every VNI; where a MAC address is behind an Ethernet segment,
                         ///< not behind which
        macsOfVni,       ///< the same of one VNI
        macsInDetail,    ///< of every VNI, with the segments
        mac,             ///< one MAC address in one VNI, with its segment
        segments,        ///< the Ethernet segments and their VTEPs
        neighbours,      ///< the IP addresses of every VNI
        neighboursOfVni, ///< those of one
        vrfs,            ///< the VRFs that have an L3 VNI
        interfaces,      ///< of a VRF
        routes,          ///< IPv4, of a VRF
        routesIpv6,      ///< IPv6, of a VRF
    };

    Kind kind;
    Vxlan::Vni vni = {};
    Nolt::EthAddr mac = {};
    std::string vrf = {};

    /// What is typed to ask it.
    std::string command() const;

    bool operator==(Question const &) const = default;
};

/// Whether `name` may be a word in a command: it is not empty, has nothing but letters, digits
/// and `_.:-`, and is not the word for every VRF, `all`, or short for it: `a` and `al` are taken
/// for it, too, as any word of a command may be cut short. The system allows any name for a VRF.
bool isVrfWord(std::string_view name) noexcept;

/// What is asked at first for what is selected. What else is to be asked depends on the
/// answers.
std::vector<Question> firstQuestions(state::Selection const & selection);

} // namespace vxshow::sources::frr
