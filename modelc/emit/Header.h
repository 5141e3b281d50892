#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The header of the model's types. `source` is the model file as its first line names it.
std::string headerText(Model const & model, std::string const & source);

} // namespace modelc
