#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"

namespace modelc {

/// Holds the names of all members that will be generated for `type` against each other,
/// its bases' and the framework's.
void checkMemberNames(Type const & type, Problems & problems);

} // namespace modelc
