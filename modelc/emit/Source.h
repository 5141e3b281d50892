#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The source of the model's types, which includes `header`. `source` is the model file as
/// the first line names it.
std::string sourceText(Model const & model, std::string const & source, std::string const & header);

} // namespace modelc
