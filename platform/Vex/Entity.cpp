#include "Vex/Entity.h"

#include "Vex/Type.h"

namespace [[gnu::visibility("default")]] Vex {

namespace {

constexpr Type ptrInterfaceType{"Vex::PtrInterface",        Type::Kind::entity, nullptr, {}, {},
                                "The root of all entities."};
constexpr Type entityType{"Vex::Entity",
                          Type::Kind::entity,
                          &ptrInterfaceType,
                          {},
                          {},
                          "An entity that can stand in a directory of published state."};

} // namespace

PtrInterface::~PtrInterface() = default;

Type const & PtrInterface::fwkType() const noexcept {
    return ptrInterfaceType;
}

Entity::~Entity() = default;

Type const & Entity::fwkType() const noexcept {
    return entityType;
}

} // namespace Vex
