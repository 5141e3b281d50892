#include "modelc/emit/Class.h"

#include "modelc/emit/Layout.h"
#include "modelc/emit/Spelling.h"
#include "modelc/emit/StringForms.h"

namespace modelc {

namespace {

Operation constructor(Type const & type) {
    return {.comment = type.constructor.empty()
                           ? "Sets every attribute to its default."
                           : "Sets the given attributes, and all others to their defaults.",
            .name = type.name,
            .parameters = constructorParameters(type),
            .isExplicit = type.constructor.size() == 1};
}

Frame entityFrame(Type const & type) {
    Frame frame;
    frame.publicOperations = {
        constructor(type),
        {.comment = "Reports the allocation to the allocation tracker, then allocates.",
         .result = "void *",
         .name = "operator new",
         .parameters = {"std::size_t size"},
         .body = {"return Vex::allocTrackAllocate(vexAllocTrackTypeInfo_, size);"},
         .isStatic = true},
        {.comment = "Reports the release to the allocation tracker, then frees the memory.",
         .result = "void",
         .name = "operator delete",
         .parameters = {"void * memory", "std::size_t size"},
         .qualifiers = "noexcept",
         .body = {"Vex::allocTrackRelease(vexAllocTrackTypeInfo_, memory, size);"},
         .isStatic = true},
        {.comment = "The reflection record of the object's type.",
         .result = "Vex::Type const &",
         .name = "fwkType",
         .qualifiers = "const noexcept override",
         .body = {"return _vexType;"}}};
    if (type.creator) {
        frame.publicOperations.push_back({.comment = "Creates a notification-active object.",
                                          .result = "Vex::Ptr<" + type.name + ">",
                                          .name = type.name + "Is",
                                          .parameters = constructorParameters(type),
                                          .body = {"return newActive<" + type.name + ">(" +
                                                   joined(constructorValues(type), ", ") + ");"},
                                          .isStatic = true});
    }
    frame.protectedOperations = {{.comment = "Releases everything it owns or shares.",
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
    return {.comment = "Compares attribute by attribute, up to the first difference.",
            .result = "bool",
            .name = "operator==",
            .parameters = {type.name + (none ? " const &" : " const & other")},
            .qualifiers = "const",
            .body = {"return " + all + ";"}};
}

Frame valueFrame(Type const & type) {
    Frame frame;
    frame.publicOperations.push_back({.comment = "Sets every attribute to its default.",
                                      .name = type.name,
                                      .qualifiers = "= default"});
    if (!type.constructor.empty()) {
        frame.publicOperations.push_back(constructor(type));
    }
    frame.publicOperations.push_back(stringConstructor(type));
    frame.publicOperations.push_back(equality(type));
    if (holdsCollection(type)) {
        frame.publicOperations.push_back({.comment = "Whether this is the default value.",
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
        std::string const spelling = spelling::storedParameter(argument->type);
        parameters.push_back(spelling + " " + argument->name);
    }
    return parameters;
}

std::vector<std::string> constructorValues(Type const & type) {
    std::vector<std::string> values;
    for (auto const * argument : type.constructor) {
        values.push_back(spelling::storedValue(argument->type, argument->name));
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
