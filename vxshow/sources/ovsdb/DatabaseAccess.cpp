#include "vxshow/sources/ovsdb/DatabaseAccess.h"

#include "vxshow/sources/Source.h"
#include "vxshow/sources/ovsdb/Ask.h"

namespace vxshow::sources::ovsdb {

namespace {

/// Which MAC tables the selection looks at. What is local is received from a switch and
/// advertised to any other source but QVX; what is remote is the other way round.
Wanted wantedOf(state::Selection const & selection, Role role) {
    bool const isSwitch = role == Role::switches;
    bool const isAdvertisedTo = role != Role::qvx;
    Wanted wanted;
    wanted.localMacs = isSwitch ? selection.received : isAdvertisedTo && selection.advertised;
    wanted.remoteMacs = isSwitch ? selection.advertised : selection.received;
    // Which MAC address an IP address has is decided among all that claim it.
    wanted.mac = selection.arpTables ? Nolt::EthAddr() : selection.mac;
    return wanted;
}

} // namespace

Answer DatabaseAccess::ask(Source const & source, state::Selection const & selection,
                           Deadline const & deadline) const {
    auto const vni = selection.vni.isNone() ? std::nullopt : std::optional(selection.vni.vni());
    return askDatabase(address_, {source.name, source.systemId, systemIds_, source.maxFacts},
                       wantedOf(selection, source.role), vni, deadline);
}

} // namespace vxshow::sources::ovsdb
