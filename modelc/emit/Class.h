#pragma once

#include "modelc/emit/Operation.h"

#include <string>
#include <utility>
#include <vector>

namespace modelc {

/// The operations that a type has beside those of its attributes: constructors, destructor,
/// allocation, reflection, comparison, creator.
struct Frame {
    std::vector<Operation> published;
    std::vector<Operation> kept; ///< protected: the destructor, which pointers alone call
};

Frame frameOf(Type const & type);

/// "TYPE NAME" for each constructor argument, spelled for what keeps them.
std::vector<std::string> constructorParameters(Type const & type);

/// The constructor arguments as they are handed on, texts moved.
std::vector<std::string> constructorValues(Type const & type);

/// The members between the last `:` and `{` of the constructor, base first.
std::vector<std::string> constructorInitializers(Type const & type);

} // namespace modelc
