#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The header of the model's types. `source` is the model file's name in its first line.
std::string headerText(Model const & model, std::string const & source);

} // namespace modelc
