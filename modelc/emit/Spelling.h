#pragma once

#include "modelc/model/Model.h"

#include <string>

/// How the types of a model are spelled in each place of the generated C++.
namespace modelc::spelling {

/// The type of a member or of a collection's element: an entity is held through a pointer to
/// const.
std::string memberType(TypeRef const & type);

/// What a getter returns: a reference to the member, or a number by value.
std::string getterType(TypeRef const & type);

/// The type of a parameter that is only read.
std::string lookupParameter(TypeRef const & type);

/// The type of a parameter whose value is stored: as `lookupParameter`, but a text is passed
/// by value, to be moved.
std::string storedParameter(TypeRef const & type);

/// The type of a method's parameter: everything is passed by value except pointers.
std::string methodParameter(TypeRef const & type);

/// The expression that stores the parameter `name`, whose type is `storedParameter`.
std::string storedValue(TypeRef const & type, std::string const & name);

/// The attribute's name with an upper-case initial, as in the type names of a collection.
std::string capitalized(std::string const & name);

/// The name of the type's factory function: vtepListFactory for VtepList.
std::string factoryName(Type const & type);

/// The call that creates a notification-active entity from these arguments.
std::string creationCall(Type const & type, std::vector<std::string> const & arguments);

} // namespace modelc::spelling
