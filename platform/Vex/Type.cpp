#include "Vex/Type.h"

#include <algorithm>

namespace [[gnu::visibility("default")]] Vex {

namespace {

// Created on first use, so that a library can register types while it is loaded.
std::vector<Type const *> & table() {
    static std::vector<Type const *> types;
    return types;
}

template <class Matches>
Attribute const * findAttribute(Type const & type, Matches matches) noexcept {
    for (Type const * at = &type; at; at = at->base) {
        auto const found = std::find_if(at->attributes.begin(), at->attributes.end(), matches);
        if (found != at->attributes.end()) {
            return &*found;
        }
    }
    return nullptr;
}

} // namespace

std::string_view kindText(AttributeKind kind) noexcept {
    switch (kind) {
    case AttributeKind::constructorArgument:
        return "constructor argument";
    case AttributeKind::plain:
        return "plain";
    case AttributeKind::constant:
        return "constant";
    case AttributeKind::entityPointer:
        return "entity pointer";
    case AttributeKind::entityPointerPlain:
        return "settable entity pointer";
    case AttributeKind::ownedEntity:
        return "owned entity";
    case AttributeKind::valueCollection:
        return "value collection";
    case AttributeKind::setCollection:
        return "set";
    case AttributeKind::hashedSetCollection:
        return "hashed set";
    case AttributeKind::ownedEntityCollection:
        return "owned entity collection";
    case AttributeKind::sharedEntityCollection:
        return "shared entity collection";
    case AttributeKind::method:
        return "method";
    }
    return "unknown";
}

Attribute const * Type::attribute(std::string_view attributeName) const noexcept {
    return findAttribute(*this, [&](Attribute const & a) { return a.name == attributeName; });
}

Attribute const * Type::attribute(U32 number) const noexcept {
    return findAttribute(*this, [&](Attribute const & a) { return a.number == number; });
}

void typeNodeIs(Type const & type) {
    if (!typeNode(type.name)) {
        table().push_back(&type);
    }
}

std::vector<Type const *> const & typeTable() noexcept {
    return table();
}

Type const * typeNode(std::string_view name) noexcept {
    auto const & types = table();
    auto const found = std::find_if(types.begin(), types.end(),
                                    [&](Type const * type) { return type->name == name; });
    return found == types.end() ? nullptr : *found;
}

} // namespace Vex
