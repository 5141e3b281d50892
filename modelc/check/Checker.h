#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

namespace modelc {

/// Resolves the names of a syntax tree and holds it against the rules of the language.
/// Whatever is wrong is added to `problems`; the model may be used only when nothing was.
Model check(tree::File const & file, Problems & problems);

} // namespace modelc
