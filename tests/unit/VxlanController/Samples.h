#pragma once

#include "Vex/TypeOperations.h"

#include <string_view>

/// Values for tests that walk over the whole model without knowing its types.

/// A value of the type, as an attribute's record spells it: 0 is the default, a null
/// pointer for an entity; of 1 and 2, the first comes before the second in a collection.
/// A model value has its constructor arguments like that. A failure when the type is unknown.
Vex::AnyValue sample(std::string_view type, unsigned which);

/// The constructor arguments of a model type: samples of that number.
Vex::AnyValues sampleArguments(Vex::Type const & type, unsigned which);

/// A value with the key of `value`, a sample of that type, but other content.
Vex::AnyValue withOtherContent(std::string_view type, Vex::AnyValue value);

/// The model type as a record spells it, or null for a type of others.
Vex::Type const * modelType(std::string_view name);
