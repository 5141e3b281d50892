#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

namespace modelc {

/// Turns the literal after the `=` of an attribute, if there is one, into the C++ expression
/// of its initial value, or of its value if it is a constant.
void resolveInitial(tree::Attribute const & parsed, bool ofEntity, Attribute & attribute,
                    Problems & problems);

} // namespace modelc
