#include "modelc/emit/StringForms.h"

#include "modelc/emit/Layout.h"
#include "modelc/emit/Spelling.h"
#include "modelc/source/Quoted.h"

#include <algorithm>
#include <string_view>

namespace modelc {

namespace {

/// Whether the form leaves out a collection, of the value itself or of a value in it.
bool omitsCollection(Type const & value) {
    return holdsCollection(value) ||
           std::any_of(value.attributes.begin(), value.attributes.end(), [](Attribute const & a) {
               return a.type.declared && omitsCollection(*a.type.declared);
           });
}

/// The text before the first attribute.
std::string opening(Model const & model, Type const & value) {
    return "Value('" + model.space + "::" + value.name + "', ** {";
}

/// An attribute of the value, and the text before it.
struct FormPart {
    std::string label;
    Attribute const & attribute;
};

std::vector<FormPart> partsOf(Type const & value) {
    std::vector<FormPart> parts;
    for (auto const & attribute : value.attributes) {
        if (attribute.kind != AttributeKind::constant) {
            std::string const label = "'" + attribute.name + "': ";
            parts.push_back({parts.empty() ? label : ", " + label, attribute});
        }
    }
    return parts;
}

std::string valueParameter(Type const & value) {
    return value.name + " const & value";
}

/// The definition of a free function or of a constructor.
std::string function(std::string const & signature, std::vector<std::string> const & body) {
    std::string text = "\n" + signature;
    for (auto const & line : body) {
        text += statement(4, line);
    }
    return text + "}\n";
}

std::vector<std::string> reading(Model const & model, Type const & value) {
    if (omitsCollection(value)) {
        std::string const failed =
            "!\"No String constructor for " + value.name + " - has collection\"";
        return {"Vex::assertThat(false, " + quotedForCpp(failed) + ");"};
    }
    auto const need = [](std::string const & literal) {
        return "Vex::needString(it, end, " + quotedForCpp(literal) + ");";
    };
    std::vector<std::string> body{need(opening(model, value))};
    for (auto const & [label, attribute] : partsOf(value)) {
        body.push_back(need(label));
        body.emplace_back("try {");
        body.push_back("    " + attribute.name + "_ = Vex::deserializeAttr<" +
                       spelling::memberType(attribute.type) + ">(it, end);");
        for (auto const * error : {"RangeError", "ParseError"}) {
            body.push_back(std::string("} catch (Vex::") + error + " const & error) {");
            body.push_back("    Vex::rethrowFromDeserializeAttr(error, " +
                           quotedForCpp(attribute.name) + ");");
        }
        body.emplace_back("}");
    }
    body.push_back(need("})"));
    return body;
}

/// Whether the form depends on the value.
bool dependsOnValue(std::vector<FormPart> const & parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [](FormPart const & part) { return !isCollection(part.attribute.kind); });
}

std::vector<std::string> writing(Model const & model, Type const & value) {
    auto const parts = partsOf(value);
    std::vector<std::string> body;
    if (dependsOnValue(parts)) {
        // The model's own function of this name would hide the platform's.
        body.emplace_back("using Vex::valueToStrep;");
    }
    body.push_back("Vex::String strep(" + quotedForCpp(opening(model, value)) + ");");
    for (auto const & [label, attribute] : parts) {
        bool const none = isCollection(attribute.kind);
        std::string const right =
            none ? quotedForCpp(label + "None")
                 : quotedForCpp(label) + " + valueToStrep(value." + attribute.name + "())";
        if (4 + std::string_view("strep += ;").size() + right.size() <= lineWidth) {
            body.push_back("strep += " + right + ";");
        } else {
            body.insert(body.end(), {"strep +=", "    " + right + ";"});
        }
    }
    body.emplace_back("strep += \"})\";");
    body.emplace_back("return strep;");
    return body;
}

} // namespace

bool hasStringForms(Model const & model) {
    return std::any_of(model.types.begin(), model.types.end(),
                       [](Type const & type) { return !type.entity; });
}

std::set<std::string> stringFormHeaders(Model const & model) {
    if (!hasStringForms(model)) {
        return {};
    }
    bool const asserts = std::any_of(model.types.begin(), model.types.end(), [](Type const & type) {
        return !type.entity && omitsCollection(type);
    });
    return asserts ? std::set<std::string>{"Vex/Assert.h", "Vex/Strep.h"}
                   : std::set<std::string>{"Vex/Strep.h"};
}

Operation stringConstructor(Type const & value) {
    bool const lost = omitsCollection(value);
    return {
        .comment = lost ? "Aborts: a value with a collection cannot be read from text."
                        : "Reads the string form and advances `it` past it; throws ParseError or "
                          "RangeError.",
        .name = value.name,
        .parameters = {std::string("Vex::String::IteratorConst &") + (lost ? "" : " it"),
                       std::string("Vex::String::IteratorConst const &") + (lost ? "" : " end")}};
}

std::string stringFormDeclarations(Type const & value) {
    std::string const visible = "[[gnu::visibility(\"default\")]] ";
    std::string const comment = std::string("The string form of the value") +
                                (omitsCollection(value) ? ", with None for a collection." : ".");
    return "\n" + docComment(0, {comment}) +
           signature(0, visible + "Vex::String", "valueToStrep", {valueParameter(value)}, ");") +
           "\n" + docComment(0, {"Writes the string form."}) +
           signature(0, visible + "std::ostream &", "operator<<",
                     {"std::ostream & out", valueParameter(value)}, ");");
}

std::string stringFormDefinitions(Model const & model, Type const & value) {
    Operation const constructor = stringConstructor(value);
    std::string const parameter =
        dependsOnValue(partsOf(value)) ? valueParameter(value) : value.name + " const &";
    return function(signature(0, "", value.name + "::" + constructor.name, constructor.parameters,
                              ") {"),
                    reading(model, value)) +
           function(signature(0, "Vex::String", "valueToStrep", {parameter}, ") {"),
                    writing(model, value)) +
           function(signature(0, "std::ostream &", "operator<<",
                              {"std::ostream & out", valueParameter(value)}, ") {"),
                    {"return out << valueToStrep(value);"});
}

} // namespace modelc
