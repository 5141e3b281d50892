#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

namespace modelc {

/// Resolves the names in a syntax tree and checks it against the rules of the language.
/// Errors are added to `problems`; the model is usable only if there are none.
Model check(tree::File const & file, Problems & problems);

} // namespace modelc
