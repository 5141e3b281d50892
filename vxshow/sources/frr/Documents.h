#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/sources/Answer.h"
#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/FactBudget.h"
#include "vxshow/sources/frr/Question.h"
#include "vxshow/state/Selection.h"
#include "vxshow/system/FileBytes.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// What the operator says of a VTEP that runs FRR.
struct VtepSource {
    /// The name of the switch.
    std::string name;
    /// The system identifier of the switch.
    std::optional<Nolt::EthAddr> systemId = {};
    /// Whether it is a failure that EVPN is not active there.
    bool expectsEvpn = true;
    /// The most facts that the VTEP can come to.
    std::size_t maxFacts = defaultMaxFacts;
    state::Role role = state::Role::switches;
};

/// The answer of zebra to a question.
struct Document {
    Question question;
    system::FileBytes bytes;
};

/// Reads answers of zebra, in the order of the questions. That to `macsInDetail` replaces all
/// earlier entries of MAC addresses; that to `mac` replaces the entry of an address behind an
/// Ethernet segment. Documents are of different moments, so what one refers to can be gone in the
/// next: such entries are left out, and the answer does not fit. Raises `AnswerError` for a
/// document that is not as zebra writes it, with the command and the place, `TimedOut` if many
/// entries are still unread at the deadline, and `TooManyFacts` before more facts are made than the
/// source can come to.
///
/// - If EVPN is not active, since bgpd is down or does not advertise all VNIs, zebra answers
/// nothing
///   about VNIs, or since FRR 9.0 an empty object: that is a `Failure`, and so is a zebra without
///   VNIs on a machine with VXLAN devices that are up, unless the source expects no EVPN. A VTEP
///   without VNIs answers with an empty list.
/// - A local MAC address is at the VTEP address of its VNI, a remote one at its `remoteVtep`,
///   or at each VTEP of its Ethernet segment. A local one on a segment is at this VTEP; the other
///   VTEPs of the segment report their own.
/// - Moves, and changes of IP addresses, are the mobility sequence in effect: the local one of a
///   local entry, the remote one of a remote entry.
/// - MAC addresses that are known only from ARP are behind no VTEP, and inactive IP addresses are
///   not announced: neither is in the facts.
/// - The zero MAC address is flooded to the VTEPs in the list of each VNI; on the local side, to
///   the VTEP's own address, which is in the lists of the others while the VNI's VXLAN device is
///   up.
/// - Routers are the VRFs with an L3 VNI. Their ports are the addresses of the interfaces that
///   belong to their VNIs, except link-local ones. Their routes are those in use; one without a
///   nexthop is connected, or a blackhole.
/// - Unknown members are ignored, and so are values between entries that are not entries. An
///   invalid MAC address, IP address, prefix or VNI is left out and counted.
Answer readDocuments(std::vector<Document> const & documents, VtepSource const & source,
                     state::Selection const & selection = {},
                     Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::frr
