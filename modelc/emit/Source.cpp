#include "modelc/emit/Source.h"

#include "modelc/emit/Class.h"
#include "modelc/emit/Layout.h"
#include "modelc/emit/Spelling.h"
#include "modelc/emit/StringForms.h"
#include "modelc/source/Quoted.h"

#include <algorithm>
#include <set>

namespace modelc {

namespace {

/// What follows the parameters in a definition; `override` is left to the declaration.
std::string tailOf(Operation const & operation) {
    std::string qualifiers = operation.qualifiers;
    if (auto const at = qualifiers.rfind("override"); at != std::string::npos) {
        qualifiers.erase(at == 0 ? 0 : at - 1);
    }
    return qualifiers.empty() ? ")" : ") " + qualifiers;
}

std::string definition(Type const & type, Operation const & operation) {
    std::string text = signature(0, operation.result, type.name + "::" + operation.name,
                                 operation.parameters, tailOf(operation) + " {");
    for (auto const & line : operation.body) {
        text += statement(4, line);
    }
    return text + "}\n";
}

std::string constructorDefinition(Type const & type) {
    auto const initializers = constructorInitializers(type);
    std::string const head = type.name + "::" + type.name + "(";
    auto const parameters = constructorParameters(type);
    if (initializers.empty()) {
        return wrapped(0, head, parameters, ") = default;");
    }
    std::string const line =
        head + joined(parameters, ", ") + ") : " + joined(initializers, ", ") + " {}";
    if (line.size() <= lineWidth) {
        return line + "\n";
    }
    return wrapped(0, head, parameters, ")") + wrapped(4, ": ", initializers, " {}");
}

bool isDefinedHere(Operation const & operation) {
    return !operation.inHeader && !operation.body.empty();
}

std::string trackerDefinition(Model const & model, Type const & type) {
    std::string const name = type.name + "::vexAllocTrackTypeInfo_(";
    std::vector<std::string> const values{quotedForCpp(model.space + "::" + type.name),
                                          "typeid(" + type.name + ")"};
    std::string const head = "Vex::AllocTrackTypeInfo " + name;
    return head.size() + values.front().size() + 1 <= lineWidth
               ? wrapped(0, head, values, ");")
               : "Vex::AllocTrackTypeInfo\n" + wrapped(4, name, values, ");");
}

std::string typeDefinitions(Model const & model, Type const & type) {
    std::string text;
    if (type.entity) {
        text.append("\n").append(trackerDefinition(model, type));
    }
    if (type.entity || !type.constructor.empty()) {
        text.append("\n").append(constructorDefinition(type));
    }
    if (type.entity) {
        text += "\n" + type.name + "::~" + type.name + "() = default;\n";
    }
    for (auto const & operation : frameOf(type).publicOperations) {
        if (isDefinedHere(operation)) {
            text.append("\n").append(definition(type, operation));
        }
    }
    for (auto const & attribute : type.attributes) {
        for (auto const & operation : operationsOf(type, attribute)) {
            if (isDefinedHere(operation)) {
                text.append("\n").append(definition(type, operation));
            }
        }
    }
    return text;
}

std::string factoryDefinition(Type const & type) {
    std::string const call =
        type.creator ? type.name + "::" + type.name + "Is(" : "newActive<" + type.name + ">(";
    std::string text = "\n";
    text += signature(0, "Vex::Ptr<" + type.name + ">", spelling::factoryName(type),
                      constructorParameters(type), ") {");
    text += wrapped(4, "return " + call, constructorValues(type), ");");
    return text + "}\n";
}

/// Whether an existing element can be requested with other arguments.
bool canReinstantiate(Model const & model) {
    return std::any_of(model.types.begin(), model.types.end(), [](Type const & type) {
        return std::any_of(type.attributes.begin(), type.attributes.end(),
                           [](Attribute const & attribute) {
                               return attribute.kind == AttributeKind::ownedEntityCollection &&
                                      attribute.type.declared->constructor.size() > 1;
                           });
    });
}

/// The platform headers that the function bodies need.
std::string sourceIncludes(Model const & model) {
    std::set<std::string> headers = stringFormHeaders(model);
    headers.insert("Vex/String.h");
    if (canReinstantiate(model)) {
        headers.insert("Vex/Reinstantiation.h");
    }
    std::string text;
    for (auto const & header : headers) {
        text += "#include \"" + header + "\"\n";
    }
    return text;
}

std::string helpers(Model const & model) {
    std::string text;
    if (std::any_of(model.types.begin(), model.types.end(),
                    [](Type const & type) { return type.entity; })) {
        text += R"(
/// Creates an entity and makes it notification-active.
template <class T, class... Args>
Vex::Ptr<T> newActive(Args &&... args) {
    auto entity = Vex::makePtr<T>(std::forward<Args>(args)...);
    entity->hasNotificationActiveIs(true);
    return entity;
}
)";
    }
    if (canReinstantiate(model)) {
        text += R"(
/// Reports that the entity under `key` was created with `stored`, not with `requested`.
template <class T, class Key, class Value>
[[noreturn]] void throwReinstantiating(Key const & key, std::string_view attribute,
                                       Value const & requested, Value const & stored) {
    Vex::throwMutatorReinstantiating(T::_vexType.name, Vex::attributeText(key), attribute,
                                     Vex::attributeText(requested), Vex::attributeText(stored));
}
)";
    }
    return text.empty() ? "" : "\nnamespace {\n" + text + "\n} // namespace\n";
}

std::string loading(Model const & model) {
    std::string text = R"(
namespace {

/// What loading the library does once, in this order.
struct Load {
    std::ios_base::Init streams;
    Vex::String prefix{"ns-"};

    Load() {
)";
    for (auto const * type : model.registration) {
        text += "        Vex::typeNodeIs(" + type->name + "::_vexType);\n";
    }
    return text + R"(    }
};

[[maybe_unused]] Load const load;

} // namespace
)";
}

} // namespace

std::string sourceText(Model const & model, std::string const & source,
                       std::string const & header) {
    std::string text = "// Generated by modelc from " + source + "; do not edit.\n\n";
    text += "#include \"" + header + "\"\n\n";
    text += sourceIncludes(model) + "\n#include <ios>\n";
    text += hasStringForms(model) ? "#include <ostream>\n" : "";
    text += "#include <string_view>\n#include <typeinfo>\n#include <utility>\n\nnamespace " +
            model.space + " {\n";
    text += helpers(model);
    for (auto const * type : model.definitions) {
        text += typeDefinitions(model, *type);
        text += type->entity ? "" : stringFormDefinitions(model, *type);
    }
    for (auto const & type : model.types) {
        if (type.factory) {
            text += factoryDefinition(type);
        }
    }
    return text + loading(model) + "\n} // namespace " + model.space + "\n";
}

} // namespace modelc
