#include "vxshow/sources/frr/VtyshAccess.h"

#include "vxshow/sources/Source.h"
#include "vxshow/sources/frr/Vtysh.h"

namespace vxshow::sources::frr {

Answer VtyshAccess::ask(Source const & source, state::Selection const & selection,
                        Deadline const & deadline) const {
    return askVtysh(command_,
                    {source.name, source.systemId, expectsEvpn_, source.maxFacts, source.role},
                    selection, deadline, maxClientOutput);
}

} // namespace vxshow::sources::frr
