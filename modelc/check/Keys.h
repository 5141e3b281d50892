#pragma once

#include "modelc/check/Scope.h"

namespace modelc {

/// Resolves the key of each collection of `type` and checks that the entities it owns can be
/// created. The attributes and constructors of all types must already be resolved.
void resolveKeys(tree::Type const & parsed, Type & type, Scope & scope, Problems & problems);

} // namespace modelc
