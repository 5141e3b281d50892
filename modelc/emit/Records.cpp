#include "modelc/emit/Records.h"

#include "modelc/emit/Layout.h"
#include "modelc/source/Quoted.h"

#include <algorithm>

namespace modelc {

namespace {

std::string kindName(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::constructorArgument:
        return "constructorArgument";
    case AttributeKind::plain:
        return "plain";
    case AttributeKind::constant:
        return "constant";
    case AttributeKind::entityPointer:
        return "entityPointer";
    case AttributeKind::entityPointerPlain:
        return "entityPointerPlain";
    case AttributeKind::ownedEntity:
        return "ownedEntity";
    case AttributeKind::valueCollection:
        return "valueCollection";
    case AttributeKind::setCollection:
        return "setCollection";
    case AttributeKind::hashedSetCollection:
        return "hashedSetCollection";
    case AttributeKind::ownedEntityCollection:
        return "ownedEntityCollection";
    case AttributeKind::sharedEntityCollection:
        return "sharedEntityCollection";
    case AttributeKind::method:
        break;
    }
    return "method";
}

/// The name under which the type table has the type.
std::string fullName(Model const & model, TypeRef const & type) {
    return type.declared ? model.space + "::" + type.name : type.name;
}

/// A method's arguments as the model writes them but with full names, in place of an
/// attribute's type.
std::string methodSignature(Model const & model, Attribute const & method) {
    std::vector<std::string> arguments;
    for (auto const & parameter : method.parameters) {
        bool const entity = parameter.type.kind == TypeClass::entity;
        arguments.push_back(parameter.name + (entity ? " : shared " : " : ") +
                            fullName(model, parameter.type));
    }
    return std::string("(").append(joined(arguments, ", ")).append(")");
}

/// One string literal per line, which the C++ compiler joins; the last has no newline.
std::vector<std::string> docLiterals(std::vector<std::string> const & doc) {
    std::vector<std::string> literals;
    for (std::size_t i = 0; i < doc.size(); ++i) {
        bool const last = i + 1 == doc.size();
        literals.push_back(quotedForCpp(doc[i] + (last ? "" : "\n")));
    }
    if (literals.empty()) {
        literals.emplace_back("\"\"");
    }
    return literals;
}

std::string row(Model const & model, Attribute const & attribute) {
    auto const doc = docLiterals(attribute.doc);
    std::vector<std::string> const cells{
        quotedForCpp(attribute.name),
        std::to_string(attribute.number),
        "Vex::AttributeKind::" + kindName(attribute.kind),
        quotedForCpp(attribute.kind == AttributeKind::method ? methodSignature(model, attribute)
                                                             : fullName(model, attribute.type)),
        quotedForCpp(attribute.key.name),
    };
    std::string line = "    {" + joined(cells, ", ") + ", " + doc.front() + "},\n";
    if (doc.size() == 1 && line.size() - 1 <= lineWidth) {
        return line;
    }
    std::string text = "    {\n";
    for (auto const & cell : cells) {
        text += "        " + cell + ",\n";
    }
    return text + "        " + joined(doc, "\n        ") + ",\n    },\n";
}

std::string argumentTable(Type const & type) {
    std::vector<std::string> names;
    for (auto const * argument : type.constructor) {
        names.push_back(quotedForCpp(argument->name));
    }
    std::string const head = "constexpr std::string_view argumentsOf" + type.name + "[] = {";
    if (head.size() + joined(names, ", ").size() + 2 <= lineWidth) {
        return "\n" + head + joined(names, ", ") + "};\n";
    }
    bool const oneLine = names.size() > 4 && 4 + joined(names, ", ").size() + 1 <= lineWidth;
    return "\n" + head + "\n    " + joined(names, oneLine ? ", " : ",\n    ") + ",\n};\n";
}

std::string docField(std::vector<std::string> const & literals) {
    std::string const head = "    .doc = ";
    bool const fits =
        std::all_of(literals.begin(), literals.end(), [&](std::string const & literal) {
            return head.size() + literal.size() < lineWidth;
        });
    std::string const margin(fits ? head.size() : 8, ' ');
    return (fits ? ".doc = " : ".doc =\n" + margin) + joined(literals, "\n" + margin);
}

} // namespace

std::string attributeTables(Model const & model) {
    std::string text;
    for (auto const & type : model.types) {
        if (!type.attributes.empty()) {
            text += "\nconstexpr Vex::Attribute attributesOf" + type.name + "[] = {\n";
            for (auto const & attribute : type.attributes) {
                text += row(model, attribute);
            }
            text += "};\n";
        }
        if (!type.constructor.empty()) {
            text += argumentTable(type);
        }
    }
    return text;
}

std::string recordDefinition(Model const & model, Type const & type) {
    std::string const attributes = type.attributes.empty() ? "{}" : "attributesOf" + type.name;
    std::string const arguments = type.constructor.empty() ? "{}" : "argumentsOf" + type.name;
    std::vector<std::string> const fields{
        ".name = " + quotedForCpp(model.space + "::" + type.name),
        std::string(".kind = Vex::Type::Kind::") + (type.entity ? "entity" : "value"),
        ".base = " + (type.base ? "&" + type.base->name + "::_vexType" : "nullptr"),
        ".attributes = " + attributes,
        ".constructorArguments = " + arguments,
        docField(docLiterals(type.doc)),
        ".operations = &implOf" + type.name,
    };
    return "constinit Vex::Type const " + type.name + "::_vexType{\n    " +
           joined(fields, ",\n    ") + ",\n};\n";
}

} // namespace modelc
