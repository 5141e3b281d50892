#pragma once

#include "Vex/TypeOperations.h"

#include <string_view>

/// Values for tests that walk over the whole model without knowing its types.

/// A value of `type`, which is spelled as in an attribute's record. Sample 0 is the default, a
/// null pointer for an entity; sample 1 comes before sample 2 in a collection. The constructor
/// arguments of a model value are samples of the same number. An unknown type fails the test.
Vex::AnyValue sample(std::string_view type, unsigned which);

/// The constructor arguments of a model type: samples of the given number.
Vex::AnyValues sampleArguments(Vex::Type const & type, unsigned which);

/// A copy of `value`, a sample of `type`, that has the same key but other content.
Vex::AnyValue withOtherContent(std::string_view type, Vex::AnyValue value);
