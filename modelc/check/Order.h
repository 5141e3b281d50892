#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"

namespace modelc {

/// The types in an order in which each stands behind those that its definition needs whole:
/// its base, the values it holds, the elements of its collections. Otherwise the order of
/// the file is kept. A type that would need itself is a problem.
std::vector<Type const *> definitionOrder(Model const & model, Problems & problems);

} // namespace modelc
