#pragma once

#include "vxshow/sources/Source.h"
#include "vxshow/text/TomlField.h"

#include <string>

namespace vxshow::sources::fabric {

/// Reads one table `[[source]]` of a fabric file. Relative file names in it count from `folder`,
/// which ends in a slash. Raises `TomlRefusal`, including for an unknown key.
Source readSourceTable(text::TomlField const & source, std::string const & folder);

} // namespace vxshow::sources::fabric
