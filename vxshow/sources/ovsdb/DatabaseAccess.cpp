#include "vxshow/sources/ovsdb/DatabaseAccess.h"

#include "vxshow/sources/Source.h"
#include "vxshow/sources/Subjects.h"
#include "vxshow/sources/ovsdb/Ask.h"

namespace vxshow::sources::ovsdb {

namespace {

/// Which MAC tables the selection looks at.
Wanted wantedOf(state::Selection const & selection, Role role) {
    Wanted wanted;
    wanted.localMacs = showsLocal(selection, role);
    wanted.remoteMacs = showsRemote(selection, role);
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
