#include "modelc/model/Model.h"

#include <algorithm>

namespace modelc {

bool isCollection(AttributeKind kind) noexcept {
    switch (kind) {
    case AttributeKind::valueCollection:
    case AttributeKind::setCollection:
    case AttributeKind::hashedSetCollection:
    case AttributeKind::ownedEntityCollection:
    case AttributeKind::sharedEntityCollection:
        return true;
    default:
        return false;
    }
}

bool holdsCollection(Type const & type) noexcept {
    return std::any_of(type.attributes.begin(), type.attributes.end(),
                       [](Attribute const & a) { return isCollection(a.kind); });
}

Attribute const * findAttribute(Type const & type, std::string_view name) noexcept {
    for (Type const * at = &type; at; at = at->base) {
        for (auto const & attribute : at->attributes) {
            if (attribute.name == name) {
                return &attribute;
            }
        }
    }
    return nullptr;
}

} // namespace modelc
