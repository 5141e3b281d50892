#pragma once

#include "modelc/check/Scope.h"

namespace modelc {

/// Finds the key of each collection of `type`, and holds what it owns against what can be
/// created: the attributes and constructors of all types must be resolved.
void resolveKeys(tree::Type const & read, Type & type, Scope & scope, Problems & problems);

} // namespace modelc
