#include "modelc/emit/Class.h"

#include "modelc/emit/Layout.h"
#include "modelc/emit/Spelling.h"
#include "modelc/emit/StringForms.h"

namespace modelc {

namespace {

Operation constructor(Type const & type) {
    return {.promise = type.constructor.empty()
                           ? "Starts empty."
                           : "Made from the attributes given, the others at their defaults.",
            .name = type.name,
            .parameters = constructorParameters(type),
            .isExplicit = type.constructor.size() == 1};
}

Frame entityFrame(Type const & type) {
    Frame frame;
    frame.published = {
        constructor(type),
        {.promise = "Reports the allocation to the tracker, then takes the memory.",
         .result = "void *",
         .name = "operator new",
         .parameters = {"std::size_t size"},
         .body = {"return Vex::allocTrackAllocate(vexAllocTrackTypeInfo_, size);"},
         .isStatic = true},
        {.promise = "Reports the release to the tracker, then gives the memory back.",
         .result = "void",
         .name = "operator delete",
         .parameters = {"void * memory", "std::size_t size"},
         .qualifiers = "noexcept",
         .body = {"Vex::allocTrackRelease(vexAllocTrackTypeInfo_, memory, size);"},
         .isStatic = true},
        {.promise = "The reflection record of the type.",
         .result = "Vex::Type const &",
         .name = "fwkType",
         .qualifiers = "const noexcept override",
         .body = {"return _vexType;"}}};
    if (type.creator) {
        frame.published.push_back({.promise = "A new object, notification-active.",
                                   .result = "Vex::Ptr<" + type.name + ">",
                                   .name = type.name + "Is",
                                   .parameters = constructorParameters(type),
                                   .body = {"return newActive<" + type.name + ">(" +
                                            joined(constructorValues(type), ", ") + ");"},
                                   .isStatic = true});
    }
    frame.kept = {{.promise = "Lets go of everything that it owns or shares.",
                   .name = "~" + type.name,
                   .qualifiers = "override"}};
    return frame;
}

Operation equality(Type const & type) {
    std::vector<std::string> equalities;
    for (auto const & attribute : type.attributes) {
        if (attribute.kind != AttributeKind::constant) {
            equalities.push_back(attribute.name + "_ == other." + attribute.name + "_");
        }
    }
    bool const none = equalities.empty();
    std::string const all = none ? "true" : joined(equalities, " && ");
    return {.promise = "Attribute by attribute, up to the first difference.",
            .result = "bool",
            .name = "operator==",
            .parameters = {type.name + (none ? " const &" : " const & other")},
            .qualifiers = "const",
            .body = {"return " + all + ";"}};
}

Frame valueFrame(Type const & type) {
    Frame frame;
    frame.published.push_back({.promise = "Every attribute at its default.",
                               .name = type.name,
                               .qualifiers = "= default"});
    if (!type.constructor.empty()) {
        frame.published.push_back(constructor(type));
    }
    frame.published.push_back(stringConstructor(type));
    frame.published.push_back(equality(type));
    if (holdsCollection(type)) {
        frame.published.push_back({.promise = "Whether it equals the default value.",
                                   .result = "bool",
                                   .name = "operator!",
                                   .qualifiers = "const",
                                   .body = {"return *this == " + type.name + "();"}});
    }
    return frame;
}

} // namespace

Frame frameOf(Type const & type) {
    return type.entity ? entityFrame(type) : valueFrame(type);
}

std::vector<std::string> constructorParameters(Type const & type) {
    std::vector<std::string> parameters;
    for (auto const * argument : type.constructor) {
        std::string const spelling = spelled::kept(argument->type);
        parameters.push_back(spelling + " " + argument->name);
    }
    return parameters;
}

std::vector<std::string> constructorValues(Type const & type) {
    std::vector<std::string> values;
    for (auto const * argument : type.constructor) {
        values.push_back(spelled::movedIn(argument->type, argument->name));
    }
    return values;
}

std::vector<std::string> constructorInitializers(Type const & type) {
    auto const values = constructorValues(type);
    std::vector<std::string> initializers;
    if (type.base && type.baseArguments > 0) {
        std::vector<std::string> const forBase(
            values.begin(), values.begin() + static_cast<std::ptrdiff_t>(type.baseArguments));
        initializers.push_back(type.base->name + "(" + joined(forBase, ", ") + ")");
    }
    for (std::size_t i = type.baseArguments; i < values.size(); ++i) {
        initializers.push_back(type.constructor[i]->name + "_(" + values[i] + ")");
    }
    return initializers;
}

} // namespace modelc
