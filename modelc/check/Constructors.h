#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

namespace modelc {

/// Gives `type`, whose attributes are resolved, its constructor arguments. They stand in
/// the order of the attributes, those of the base first.
void resolveConstructor(tree::Type const & read, Type & type, Problems & problems);

} // namespace modelc
