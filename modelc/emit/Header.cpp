#include "modelc/emit/Header.h"

#include "modelc/emit/Class.h"
#include "modelc/emit/Layout.h"
#include "modelc/emit/Spelling.h"
#include "modelc/emit/StringForms.h"

#include <algorithm>
#include <set>

namespace modelc {

namespace {

constexpr char const * exported = "[[gnu::visibility(\"default\")]]";

template <class Condition>
bool anyAttribute(Model const & model, Condition condition) {
    return std::any_of(model.types.begin(), model.types.end(), [&](Type const & type) {
        return std::any_of(type.attributes.begin(), type.attributes.end(), condition);
    });
}

bool anyEntity(Model const & model) {
    return std::any_of(model.types.begin(), model.types.end(),
                       [](Type const & type) { return type.entity; });
}

std::string headerIncludes(Model const & model) {
    std::set<std::string> headers(model.headers.begin(), model.headers.end());
    headers.insert({"Vex/Type.h", "Vex/Types.h"});
    if (anyEntity(model)) {
        headers.insert({"Vex/AllocTrack.h", "Vex/Entity.h", "Vex/Ptr.h"});
    }
    if (hasStringForms(model)) {
        headers.insert("Vex/String.h");
    }
    bool const collections =
        anyAttribute(model, [](Attribute const & a) { return isCollection(a.kind); });
    if (collections) {
        headers.insert({"Vex/OrderedMap.h", "Vex/Slot.h"});
    }
    if (anyAttribute(model, [](Attribute const & a) {
            return a.kind == AttributeKind::hashedSetCollection;
        })) {
        headers.insert("Vex/HashMap.h");
    }
    std::string text;
    for (auto const & header : headers) {
        text += "#include \"" + header + "\"\n";
    }
    return text + "\n#include <cstddef>\n" + (hasStringForms(model) ? "#include <iosfwd>\n" : "");
}

/// Puts the right side on a line of its own if the alias is too long and that is enough.
std::string slotAlias(std::string const & left, std::string const & slot,
                      std::vector<std::string> const & arguments) {
    std::string const right = slot + joined(arguments, ", ") + ">;";
    bool const ownLine = 4 + left.size() + 1 + right.size() > lineWidth;
    return ownLine && 8 + right.size() <= lineWidth
               ? "    " + left + "\n        " + right + "\n"
               : wrapped(4, left + " " + slot, arguments, ">;");
}

/// The aliases for the slot, the collection and its iterator.
std::string collectionTypes(Attribute const & attribute) {
    std::string const name = spelling::capitalized(attribute.name);
    std::string const & element = attribute.type.name;
    std::string slot = "SetSlot";
    std::vector<std::string> arguments{attribute.key.name};
    if (attribute.kind == AttributeKind::sharedEntityCollection) {
        slot = "PtrSlot";
        arguments.push_back(element);
    } else if (attribute.kind == AttributeKind::valueCollection ||
               attribute.kind == AttributeKind::ownedEntityCollection) {
        bool const value = attribute.kind == AttributeKind::valueCollection;
        slot = value ? "ValueSlot" : "EntitySlot";
        arguments.push_back(element);
        arguments.push_back("&" + element + "::" + attribute.keyAttribute);
    }
    std::string const map =
        attribute.kind == AttributeKind::hashedSetCollection ? "HashMap2018" : "OrderedMap";
    return docComment(4, {"The slot, collection and iterator types of " + attribute.name + "."}) +
           slotAlias("using Vex" + name + " =", "Vex::" + slot + "<", arguments) + "    using " +
           name + "Collection = Vex::" + map + "<Vex" + name + ">;\n    using " + name +
           "Iterator = " + name + "Collection::Iterator;\n";
}

std::string declaration(Operation const & operation) {
    std::string result = operation.isStatic ? "static " : operation.isExplicit ? "explicit " : "";
    result += operation.result;
    if (result.ends_with(' ')) {
        result.pop_back();
    }
    std::string const tail = ")" + (operation.qualifiers.empty() ? "" : " " + operation.qualifiers);
    std::string const comment = operation.comment.empty() ? "" : docComment(4, {operation.comment});
    if (!operation.inHeader) {
        return comment + signature(4, result, operation.name, operation.parameters, tail + ";");
    }
    std::string const line =
        "    " + result + " " + operation.name + "(" + tail + " { " + operation.body.front() + " }";
    if (line.size() <= lineWidth) {
        return comment + line + "\n";
    }
    return comment + signature(4, result, operation.name, {}, tail + " {") +
           statement(8, operation.body.front()) + "    }\n";
}

std::string method(Attribute const & attribute) {
    std::vector<std::string> parameters;
    for (auto const & parameter : attribute.parameters) {
        parameters.push_back(spelling::methodParameter(parameter.type) + " " + parameter.name);
    }
    return docComment(4, attribute.doc.empty() ? std::vector<std::string>{"Implemented by hand."}
                                               : attribute.doc) +
           signature(4, "void", attribute.name, parameters, ");");
}

std::string attributeMembers(Type const & type, Attribute const & attribute) {
    if (attribute.kind == AttributeKind::method) {
        return std::string("\n").append(method(attribute));
    }
    std::string text;
    if (isCollection(attribute.kind)) {
        text.append("\n").append(collectionTypes(attribute));
    }
    bool first = true;
    for (auto const & operation : operationsOf(type, attribute)) {
        text.append("\n").append(first ? docComment(4, attribute.doc) : "");
        text.append(declaration(operation));
        first = false;
    }
    return text;
}

std::string member(Type const & type, Attribute const & attribute) {
    std::string const name = attribute.name + "_";
    switch (attribute.kind) {
    case AttributeKind::constant:
    case AttributeKind::method:
        return "";
    case AttributeKind::ownedEntity:
        return "    Vex::Ptr<" + attribute.type.name + "> " + name + ";\n";
    default:
        break;
    }
    if (isCollection(attribute.kind)) {
        return "    " + spelling::capitalized(attribute.name) + "Collection " + name + ";\n";
    }
    bool const immutable = type.entity && attribute.fromConstructor && !attribute.settable;
    std::string initial = attribute.initial;
    if (initial.empty() && !immutable && attribute.type.kind == TypeClass::boolean) {
        initial = "false";
    } else if (initial.empty() && !immutable && attribute.type.kind == TypeClass::number) {
        initial = "0";
    }
    return "    " + spelling::memberType(attribute.type) + (immutable ? " const " : " ") + name +
           (initial.empty() ? "" : " = " + initial) + ";\n";
}

std::string privateMembers(Type const & type) {
    std::string text;
    for (auto const & attribute : type.attributes) {
        text += member(type, attribute);
    }
    return text.empty() ? "" : "\nprivate:\n" + text;
}

std::string classDefinition(Type const & type) {
    std::string text = docComment(0, type.doc) + "class " + exported + " " + type.name;
    if (type.entity) {
        text += " : public " + (type.base ? type.base->name : std::string("Vex::PtrInterface"));
    }
    text += " {\npublic:\n";
    if (type.entity) {
        text += "    using Ptr = Vex::Ptr<" + type.name + ">;\n    using PtrConst = Vex::Ptr<" +
                type.name + " const>;\n\n";
    }
    text += "    static Vex::Type const _vexType;\n";
    if (type.entity) {
        text += "    static Vex::AllocTrackTypeInfo vexAllocTrackTypeInfo_;\n";
    }
    Frame const frame = frameOf(type);
    for (auto const & operation : frame.publicOperations) {
        text.append("\n").append(declaration(operation));
    }
    for (auto const & attribute : type.attributes) {
        text += attributeMembers(type, attribute);
    }
    for (auto const & operation : frame.protectedOperations) {
        text.append("\nprotected:\n").append(declaration(operation));
    }
    return text + privateMembers(type) + "};\n";
}

std::string factoryDeclaration(Type const & type) {
    return docComment(0, {"Creates a notification-active " + type.name + "."}) +
           signature(0, std::string(exported) + " Vex::Ptr<" + type.name + ">",
                     spelling::factoryName(type), constructorParameters(type), ");");
}

} // namespace

std::string headerText(Model const & model, std::string const & source) {
    std::string text = "// Generated by modelc from " + source + "; do not edit.\n\n";
    text.append("#pragma once\n\n").append(headerIncludes(model));
    text.append("\nnamespace ").append(model.space).append(" {\n\n");
    for (auto const * number : {"U16", "U32", "U64", "U8"}) {
        text += std::string("using Vex::") + number + ";\n";
    }
    text += "\n";
    for (auto const & type : model.types) {
        text += std::string("class ") + exported + " " + type.name + ";\n";
    }
    for (auto const * type : model.definitions) {
        text.append("\n").append(classDefinition(*type));
        text += type->entity ? "" : stringFormDeclarations(*type);
    }
    for (auto const & type : model.types) {
        if (type.factory) {
            text.append("\n").append(factoryDeclaration(type));
        }
    }
    return text + "\n} // namespace " + model.space + "\n";
}

} // namespace modelc
