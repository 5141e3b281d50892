#include "modelc/emit/Layout.h"
#include "modelc/emit/Operation.h"
#include "modelc/emit/Spelling.h"

namespace modelc {

namespace {

Operation getter(Attribute const & attribute, std::string comment = "") {
    return {.comment = std::move(comment),
            .result = spelling::getterType(attribute.type),
            .name = attribute.name,
            .qualifiers = "const noexcept",
            .body = {"return " + attribute.name + "_;"},
            .inHeader = true};
}

Operation setter(Type const & owner, Attribute const & attribute) {
    return {
        .result = "void",
        .name = attribute.name + "Is",
        .parameters = {spelling::storedParameter(attribute.type) + " value"},
        .qualifiers = owner.entity ? "" : "&",
        .body = {attribute.name + "_ = " + spelling::storedValue(attribute.type, "value") + ";"}};
}

std::vector<Operation> ownedEntity(Attribute const & attribute) {
    std::string const & type = attribute.type.name;
    std::string const member = attribute.name + "_";
    return {{.comment = "The entity, or null if there is none.",
             .result = "Vex::Ptr<" + type + " const>",
             .name = attribute.name,
             .qualifiers = "const",
             .body = {"return " + member + ";"}},
            {.comment = "The same, mutable.",
             .result = "Vex::Ptr<" + type + ">",
             .name = attribute.name,
             .body = {"return " + member + ";"}},
            {.comment = "Returns the entity; creates it if there is none.",
             .result = "Vex::Ptr<" + type + ">",
             .name = attribute.name + "Is",
             .body = {"if (!" + member + ") {",
                      "    " + member + " = " +
                          spelling::creationCall(*attribute.type.declared, {}) + ";",
                      "}", "return " + member + ";"}},
            {.comment = "Removes the entity, if there is one.",
             .result = "void",
             .name = attribute.name + "Del",
             .body = {member + " = nullptr;"}}};
}

Operation constant(Attribute const & attribute) {
    return {.comment = "The same for every object.",
            .result = attribute.type.name,
            .name = attribute.name,
            .body = {"return " + attribute.initial + ";"},
            .isStatic = true};
}

} // namespace

std::vector<Operation> operationsOf(Type const & owner, Attribute const & attribute) {
    switch (attribute.kind) {
    case AttributeKind::constructorArgument:
    case AttributeKind::entityPointer:
        return {getter(attribute)};
    case AttributeKind::plain:
        return {getter(attribute), setter(owner, attribute)};
    case AttributeKind::entityPointerPlain:
        return {getter(attribute, attribute.fromConstructor ? "" : "Null until it is set."),
                setter(owner, attribute)};
    case AttributeKind::constant:
        return {constant(attribute)};
    case AttributeKind::ownedEntity:
        return ownedEntity(attribute);
    case AttributeKind::method:
        return {};
    default:
        return collectionOperations(owner, attribute);
    }
}

} // namespace modelc
