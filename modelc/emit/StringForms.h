#pragma once

#include "modelc/emit/Operation.h"

#include <set>
#include <string>

/// The string form of a value type: the text in which tools show a value and read it back,
///
///     Value('N::Berth', ** {'number': 7, 'ship': Anna})
///
/// with the attributes in the order of the model, each in its own form. A collection is
/// never written out but stands as None, so that a form is short whatever the value holds;
/// a value with one therefore cannot be read back. Constants belong to the type and not to
/// the value, and do not occur.
///
/// Of an imported type whose values are attributes, the generated code needs `stringValue()`
/// and, where the value can be read, `fromString(std::string_view)`; or else an own
/// `valueToStrep` and a constructor from a string range, as generated types have them.
namespace modelc {

/// Whether the model has values, and so string forms at all.
bool hasStringForms(Model const & model);

/// The platform's headers that the definitions need.
std::set<std::string> stringFormHeaders(Model const & model);

/// The constructor that reads the string form, without its body.
Operation stringConstructor(Type const & value);

/// The declarations of `valueToStrep` and of the output operator.
std::string stringFormDeclarations(Type const & value);

/// The definitions of the constructor and of both functions.
std::string stringFormDefinitions(Model const & model, Type const & value);

} // namespace modelc
