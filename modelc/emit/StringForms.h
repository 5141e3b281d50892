#pragma once

#include "modelc/emit/Operation.h"

#include <set>
#include <string>

/// The string form of a value type: the text in which tools show a value and read it back,
///
///     Value('N::Berth', ** {'number': 7, 'ship': Anna})
///
/// with the attributes in the order of the model, each in its own form. A collection is
/// always written as None, so that the form stays short whatever the value holds; a value
/// with a collection therefore cannot be read back. Constants belong to the type, not to the
/// value, and are left out.
///
/// For an imported type used as an attribute, the generated code needs `stringValue()` and,
/// if the value can be read back, `fromString(std::string_view)`; or else its own
/// `valueToStrep` and a constructor from a string range, like those of generated types.
namespace modelc {

/// Whether the model has values, and so any string forms.
bool hasStringForms(Model const & model);

/// The platform headers that the definitions need.
std::set<std::string> stringFormHeaders(Model const & model);

/// The constructor that reads the string form, without its body.
Operation stringConstructor(Type const & value);

/// The declarations of `valueToStrep` and of the output operator.
std::string stringFormDeclarations(Type const & value);

/// The definitions of the constructor and of both functions.
std::string stringFormDefinitions(Model const & model, Type const & value);

} // namespace modelc
