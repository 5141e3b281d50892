#include "modelc/check/Members.h"

#include <map>
#include <string>

namespace modelc {

namespace {

/// The members of an attribute beside its getter.
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

void checkFramework(Attribute const & attribute, Problems & problems) {
    for (auto const * taken :
         {"fwkType", "hasNotificationActive", "newRef", "deleteRef", "references"}) {
        if (attribute.name == taken) {
            problems.add(attribute.at, "'" + attribute.name +
                                           "' is an operation that every entity "
                                           "has");
        }
    }
}

} // namespace

void checkMemberNames(Type const & type, Problems & problems) {
    std::map<std::string, Attribute const *> makers;
    for (Type const * at = &type; at; at = at->base) {
        for (auto const & attribute : at->attributes) {
            for (auto const & operation : operations(attribute)) {
                makers.emplace(operation, &attribute);
            }
        }
    }
    for (auto const & attribute : type.attributes) {
        if (auto const maker = makers.find(attribute.name); maker != makers.end()) {
            problems.add(attribute.at, "'" + attribute.name + "' is already an operation of '" +
                                           maker->second->name + "' in line " +
                                           std::to_string(maker->second->at.line));
        }
        for (auto const & operation : operations(attribute)) {
            if (auto const * taken = type.base ? findAttribute(*type.base, operation) : nullptr) {
                problems.add(attribute.at, "the operation '" + operation + "' of '" +
                                               attribute.name +
                                               "' is already an attribute in line " +
                                               std::to_string(taken->at.line));
            }
        }
        if (type.entity) {
            checkFramework(attribute, problems);
        }
    }
}

} // namespace modelc
