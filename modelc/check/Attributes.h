#pragma once

#include "modelc/check/Scope.h"

namespace modelc {

/// Adds the attributes of `type`, with kind, type and number. Each parsed attribute gets an
/// entry, in the same order, even if it has an error; the name of an unknown type is left
/// empty.
void resolveAttributes(tree::Type const & parsed, Type & type, Scope & scope, Problems & problems);

} // namespace modelc
