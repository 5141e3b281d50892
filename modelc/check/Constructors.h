#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

namespace modelc {

/// Resolves the constructor arguments of `type`, whose attributes are already resolved. They
/// must be in the order of the attributes, those of the base first.
void resolveConstructor(tree::Type const & parsed, Type & type, Problems & problems);

} // namespace modelc
