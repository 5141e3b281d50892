#include "vxshow/sources/Subjects.h"

namespace vxshow::sources {

using state::Role;

bool showsLocal(state::Selection const & selection, Role role) {
    return role == Role::switches ? selection.received : role != Role::qvx && selection.advertised;
}

bool showsRemote(state::Selection const & selection, Role role) {
    return role == Role::switches ? selection.advertised : selection.received;
}

Subjects subjectsShown(state::Selection const & selection, Role role) {
    Subjects shown;
    auto const add = [&](bool isShown, Subject subject) {
        shown = isShown ? shown | subject : shown;
    };
    bool const local = showsLocal(selection, role);
    bool const remote = showsRemote(selection, role);
    add(local && selection.macTables, Subject::localMacs);
    add(remote && selection.macTables, Subject::remoteMacs);
    add(local && selection.arpTables, Subject::localBindings);
    add(remote && selection.arpTables, Subject::remoteBindings);
    add(selection.routers, Subject::routers);
    return shown;
}

} // namespace vxshow::sources
