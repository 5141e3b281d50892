#include "Vex/Entity.h"

#include "Vex/Type.h"

namespace [[gnu::visibility("default")]] Vex {

constinit Type const PtrInterface::_vexType{
    "Vex::PtrInterface", Type::Kind::entity, nullptr, {}, {}, "The root of all entities."};

constinit Type const Entity::_vexType{
    "Vex::Entity",
    Type::Kind::entity,
    &PtrInterface::_vexType,
    {},
    {},
    "An entity that can be listed in a directory of published state."};

PtrInterface::~PtrInterface() = default;

Type const & PtrInterface::fwkType() const noexcept {
    return _vexType;
}

Entity::~Entity() = default;

Type const & Entity::fwkType() const noexcept {
    return _vexType;
}

} // namespace Vex
