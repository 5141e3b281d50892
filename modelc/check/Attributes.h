#pragma once

#include "modelc/check/Scope.h"

namespace modelc {

/// Gives `type` its attributes: kind, type, number. Each written attribute has its entry,
/// in the same order, even when something is wrong with it; one whose type is unknown has
/// a type without a name.
void resolveAttributes(tree::Type const & read, Type & type, Scope & scope, Problems & problems);

} // namespace modelc
