#include "modelc/check/Members.h"

#include <map>
#include <string>

namespace modelc {

namespace {

/// The members of an attribute besides its getter.
std::vector<std::string> operations(Attribute const & attribute) {
    std::string const & x = attribute.name;
    if (isCollection(attribute.kind)) {
        return {x + "Has", x + "Is", x + "Del", x + "DelAll"};
    }
    switch (attribute.kind) {
    case AttributeKind::plain:
    case AttributeKind::entityPointerPlain:
        return {x + "Is"};
    case AttributeKind::ownedEntity:
        return {x + "Is", x + "Del"};
    default:
        return {};
    }
}

void checkFrameworkNames(Attribute const & attribute, Problems & problems) {
    for (auto const * reserved :
         {"fwkType", "hasNotificationActive", "newRef", "deleteRef", "references"}) {
        if (attribute.name == reserved) {
            problems.add(attribute.at,
                         "'" + attribute.name + "' is an operation that every entity has");
        }
    }
}

} // namespace

void checkMemberNames(Type const & type, Problems & problems) {
    std::map<std::string, Attribute const *> operationOwners;
    for (Type const * at = &type; at; at = at->base) {
        for (auto const & attribute : at->attributes) {
            for (auto const & operation : operations(attribute)) {
                operationOwners.emplace(operation, &attribute);
            }
        }
    }
    for (auto const & attribute : type.attributes) {
        if (auto const owner = operationOwners.find(attribute.name);
            owner != operationOwners.end()) {
            problems.add(attribute.at, "'" + attribute.name + "' is already an operation of '" +
                                           owner->second->name + "' on line " +
                                           std::to_string(owner->second->at.line));
        }
        for (auto const & operation : operations(attribute)) {
            if (auto const * taken = type.base ? findAttribute(*type.base, operation) : nullptr) {
                problems.add(attribute.at, "the operation '" + operation + "' of '" +
                                               attribute.name +
                                               "' is already an attribute on line " +
                                               std::to_string(taken->at.line));
            }
        }
        if (type.entity) {
            checkFrameworkNames(attribute, problems);
        }
    }
}

} // namespace modelc
