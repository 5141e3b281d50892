#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"

namespace modelc {

/// The types in an order in which each follows those that its definition needs complete: its
/// base, the values it holds, the elements of its collections. Otherwise file order is kept.
/// A type that needs itself is a problem.
std::vector<Type const *> definitionOrder(Model const & model, Problems & problems);

} // namespace modelc
