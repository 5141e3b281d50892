#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The source of the reflection: for each type its record, and beside it the description
/// from which the framework makes the operations on its objects. A file of its own, since
/// it is compiled into much code of which the model itself uses nothing. `source` and
/// `header` are the names of the model file and of the generated header.
std::string reflectionText(Model const & model, std::string const & source,
                           std::string const & header);

} // namespace modelc
