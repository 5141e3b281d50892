#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"

namespace modelc {

/// Checks that the members generated for `type` do not collide with each other, with those
/// of its bases or with the framework's.
void checkMemberNames(Type const & type, Problems & problems);

} // namespace modelc
