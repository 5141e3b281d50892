#include "modelc/emit/Layout.h"
#include "modelc/emit/Operation.h"
#include "modelc/emit/Spelling.h"

namespace modelc {

namespace {

Operation getter(Attribute const & attribute, std::string promise) {
    return {.promise = std::move(promise),
            .result = spelled::got(attribute.type),
            .name = attribute.name,
            .qualifiers = "const noexcept",
            .body = {"return " + attribute.name + "_;"},
            .inHeader = true};
}

Operation setter(Type const & owner, Attribute const & attribute) {
    return {.promise = "Sets it.",
            .result = "void",
            .name = attribute.name + "Is",
            .parameters = {spelled::kept(attribute.type) + " value"},
            .qualifiers = owner.entity ? "" : "&",
            .body = {attribute.name + "_ = " + spelled::movedIn(attribute.type, "value") + ";"}};
}

std::vector<Operation> ownedEntity(Attribute const & attribute) {
    std::string const & type = attribute.type.name;
    std::string const member = attribute.name + "_";
    return {
        {.promise = "The object, or null while there is none.",
         .result = "Vex::Ptr<" + type + " const>",
         .name = attribute.name,
         .qualifiers = "const",
         .body = {"return " + member + ";"}},
        {.promise = "The same, to be changed.",
         .result = "Vex::Ptr<" + type + ">",
         .name = attribute.name,
         .body = {"return " + member + ";"}},
        {.promise = "The object; a new one when there is none.",
         .result = "Vex::Ptr<" + type + ">",
         .name = attribute.name + "Is",
         .body = {"if (!" + member + ") {",
                  "    " + member + " = " + spelled::creation(*attribute.type.declared, {}) + ";",
                  "}", "return " + member + ";"}},
        {.promise = "Drops the object, if there is one.",
         .result = "void",
         .name = attribute.name + "Del",
         .body = {member + " = nullptr;"}}};
}

Operation constant(Attribute const & attribute) {
    return {.promise = "The same for every object.",
            .result = attribute.type.name,
            .name = attribute.name,
            .body = {"return " + attribute.initial + ";"},
            .isStatic = true};
}

} // namespace

std::vector<Operation> operationsOf(Type const & owner, Attribute const & attribute) {
    switch (attribute.kind) {
    case AttributeKind::constructorArgument:
        return {getter(attribute, "Given to the constructor.")};
    case AttributeKind::entityPointer:
        return {getter(attribute, "Given to the constructor, shared with its giver.")};
    case AttributeKind::plain:
        return {getter(attribute, "The present value."), setter(owner, attribute)};
    case AttributeKind::entityPointerPlain:
        return {getter(attribute, "Shared with its giver; null at first."),
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
