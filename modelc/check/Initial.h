#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

namespace modelc {

/// Turns what stands behind the `=` of an attribute, if anything, into the C++ expression
/// of its first value, or of its only value when it is a constant.
void resolveInitial(tree::Attribute const & read, bool ofEntity, Attribute & attribute,
                    Problems & problems);

} // namespace modelc
