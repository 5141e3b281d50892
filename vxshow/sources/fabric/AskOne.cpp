#include "vxshow/sources/fabric/AskOne.h"

#include "vxshow/sources/frr/Vtysh.h"
#include "vxshow/sources/ovsdb/Ask.h"

namespace vxshow::sources::fabric {

namespace {

/// Which of a database's MAC tables the selection looks at: those of its own side are received
/// from a switch, and advertised to any other source that is told anything.
ovsdb::Wanted wantedOf(state::Selection const & selection, Role role) {
    bool const isSwitch = role == Role::switches;
    bool const isTold = role != Role::qvx;
    ovsdb::Wanted wanted;
    wanted.localMacs = isSwitch ? selection.received : isTold && selection.advertised;
    wanted.remoteMacs = isSwitch ? selection.advertised : selection.received;
    // The right to an IP address is among all MAC addresses that claim it.
    wanted.mac = selection.arpTables ? Nolt::EthAddr() : selection.mac;
    return wanted;
}

Answer readDatabase(Source const & source, ovsdb::DatabaseAddress const & address,
                    state::Selection const & selection, Deadline const & deadline) {
    auto const vni = selection.vni.isNone() ? std::nullopt : std::optional(selection.vni.vni());
    return ovsdb::askDatabase(address, {source.name, source.systemId, source.systemIds},
                              wantedOf(selection, source.role), vni, deadline);
}

Answer readVtep(Source const & source, frr::VtyshCommand const & vtysh,
                state::Selection const & selection, Deadline const & deadline) {
    return frr::askVtysh(vtysh, {source.name, source.systemId}, selection, deadline.end,
                         system::FileBytes::longest);
}

} // namespace

Answer askOne(Source const & source, state::Selection const & selection,
              Deadline const & deadline) {
    if (auto const * address = std::get_if<ovsdb::DatabaseAddress>(&source.access)) {
        return readDatabase(source, *address, selection, deadline);
    }
    return readVtep(source, std::get<frr::VtyshCommand>(source.access), selection, deadline);
}

} // namespace vxshow::sources::fabric
