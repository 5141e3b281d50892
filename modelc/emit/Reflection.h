#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The source of the reflection: the record of each type, and the description from which the
/// framework derives the operations on its objects. It is a separate file because it compiles
/// into much code that the model itself does not use. `source` and `header` are the names of
/// the model file and of the generated header.
std::string reflectionText(Model const & model, std::string const & source,
                           std::string const & header);

} // namespace modelc
