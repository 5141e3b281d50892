#pragma once

#include "modelc/source/Problem.h"

#include <optional>
#include <string>
#include <vector>

/// The syntax tree: what a model file says, word for word, with the location of every name.
/// Nothing in it is checked yet.
namespace modelc::tree {

/// A name; if it is qualified, its parts are joined by "::".
struct Name {
    std::string text;
    Location at;
};

struct Literal {
    enum class Kind { number, boolean, text };

    Kind kind;
    std::string text; ///< digits, "true" or "false", or the string's content
    Location at;
};

/// `name : Type` or `name : shared Type` in a method's parentheses.
struct Argument {
    Name name;
    bool shared;
    Name type;
};

/// What follows an attribute's colon.
enum class Shape {
    plain,     ///< Type, or Type[key]
    constant,  ///< constant Type
    owned,     ///< owned Type, or owned Type[key]
    shared,    ///< shared Type, or shared Type[key]
    set,       ///< set[Type]
    hashedSet, ///< hashed set[Type]
    method,    ///< method name(arguments)
};

struct Attribute {
    std::vector<std::string> doc;
    Name name;
    Shape shape = Shape::plain;
    std::optional<Location> settable;
    Name type;               ///< empty for sets and methods
    std::optional<Name> key; ///< an attribute of the element, or a type
    std::optional<Literal> initial;
    std::vector<Argument> arguments; ///< of a method
};

struct Type {
    std::vector<std::string> doc;
    bool entity = false;
    Name name;
    std::vector<Name> constructor;
    std::optional<Name> base;
    std::vector<Name> extras; ///< the words after `with`
    std::vector<Attribute> attributes;
};

/// `import KIND Type from "header"`; an imported value can name its key attribute.
struct Import {
    Name kind;
    Name type;
    std::optional<Name> keyAttribute;
    Name keyType;
    std::string header;
};

struct File {
    Name space;
    std::vector<Import> imports;
    std::vector<Type> types;
    std::vector<Name> registration;
    Location registrationAt; ///< of the list, or of the end of the file if there is none
};

} // namespace modelc::tree
