#pragma once

#include "modelc/emit/Operation.h"

#include <string>
#include <utility>
#include <vector>

namespace modelc {

/// The operations of a type besides those of its attributes: constructors, destructor,
/// allocation, reflection, comparison, creator.
struct Frame {
    std::vector<Operation> publicOperations;
    std::vector<Operation> protectedOperations; ///< the destructor, called only by pointers
};

Frame frameOf(Type const & type);

/// "TYPE NAME" for each constructor argument, passed as for storing it.
std::vector<std::string> constructorParameters(Type const & type);

/// The expressions that pass the constructor arguments on; texts are moved.
std::vector<std::string> constructorValues(Type const & type);

/// The constructor's initializer list, the base first.
std::vector<std::string> constructorInitializers(Type const & type);

} // namespace modelc
