#pragma once

#include "modelc/model/Model.h"

#include <string>

namespace modelc {

/// The tables of attributes and constructor arguments of all types, which the reflection
/// records refer to. They belong into the unnamed namespace of the generated source.
std::string attributeTables(Model const & model);

/// The definition of the type's reflection record, which refers to its tables and, as
/// `implOfTYPE`, to the operations on its objects.
std::string recordDefinition(Model const & model, Type const & type);

} // namespace modelc
