#pragma once

#include "modelc/model/Model.h"

#include <string>

/// How C++ spells the types of a model in each place where they stand.
namespace modelc::spelled {

/// What a member or a collection holds: an entity is held through a pointer to const.
std::string held(TypeRef const & type);

/// What a getter returns: a reference to what is held, or the number itself.
std::string got(TypeRef const & type);

/// A parameter that is only looked at.
std::string looked(TypeRef const & type);

/// A parameter whose value is kept: as `looked`, but a text comes by value, to be moved in.
std::string kept(TypeRef const & type);

/// A parameter of a method: everything by value, but pointers.
std::string given(TypeRef const & type);

/// The expression that moves the parameter `name`, spelled by `kept`, to where it is kept.
std::string movedIn(TypeRef const & type, std::string const & name);

/// The attribute's name with a capital, as the types around a collection are named.
std::string capital(std::string const & name);

/// The name of the free factory of the type: vtepListFactory for VtepList.
std::string factory(Type const & type);

/// The call that makes a new, active entity from these arguments.
std::string creation(Type const & type, std::vector<std::string> const & arguments);

} // namespace modelc::spelled
