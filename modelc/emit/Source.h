#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The source of the model's types, which includes `header`. `source` is the model file's
/// name in its first line.
std::string sourceText(Model const & model, std::string const & source, std::string const & header);

} // namespace modelc
