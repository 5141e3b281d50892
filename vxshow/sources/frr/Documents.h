#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/sources/Answer.h"
#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/frr/Question.h"
#include "vxshow/state/Selection.h"
#include "vxshow/system/FileBytes.h"

#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// What the one who names a VTEP that runs FRR tells of it.
struct VtepSource {
    /// The name of the switch.
    std::string name;
    /// The system identifier of the switch.
    std::optional<Nolt::EthAddr> systemId = {};
};

/// What zebra answered to a question.
struct Document {
    Question question;
    system::FileBytes bytes;
};

/// Reads answers of zebra, in the order in which they were asked for. What `macsInDetail` tells
/// replaces all that was said of MAC addresses before; what is told of one MAC address replaces
/// that it is behind an Ethernet segment. Raises `AnswerError` for a document that is not as
/// zebra writes it, with the command and the place, and `TimedOut` when many entries are left at
/// the deadline. Documents are of different moments, so what one refers to can be gone in the
/// next: such entries are left out, and the answer does not fit.
///
/// - No text at all in place of the VNIs, or of one, is what zebra answers when EVPN is not in
///   force, since bgpd is down or does not advertise all VNIs: that is remarked. An empty list or
///   object is the answer of a VTEP that has none.
/// - A local MAC address is at the VTEP address of its VNI, a remote one at its `remoteVtep`,
///   or at each VTEP of its Ethernet segment. A local one on a segment is at this VTEP: what
///   the others of the segment have is theirs to tell.
/// - Moves, and changes of IP addresses, are the mobility sequence in force: the local one of
///   a local entry, the remote one of a remote entry.
/// - MAC addresses that are known from ARP alone are behind no VTEP, and inactive IP addresses
///   are announced to nobody: neither is in the state.
/// - The zero MAC address is flooded to the VTEPs of each VNI's list; on the local side it has
///   the VTEP's own address, with which it is in the lists of others.
/// - Routers are the VRFs with an L3 VNI. Their ports are the addresses of the interfaces that
///   belong to their VNIs, but for link-local ones; their routes are those in use, and one
///   without a nexthop is connected, or a dead end.
/// - Unknown members are passed over, and so is what stands between entries without being one.
///   Text that is no MAC address, IP address, prefix or VNI is left out and noticed.
Answer readDocuments(std::vector<Document> const & documents, VtepSource const & source,
                     state::Selection const & selection = {},
                     Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::frr
