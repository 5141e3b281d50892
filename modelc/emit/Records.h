#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The tables of attributes and constructor arguments that the reflection records name,
/// for all types, at the place where the source keeps what it does not show.
std::string attributeTables(Model const & model);

/// The definition of the type's reflection record, which names its tables and, as
/// `implOfTYPE`, the operations on its objects.
std::string recordDefinition(Model const & model, Type const & type);

} // namespace modelc
