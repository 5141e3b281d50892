#pragma once

#include "modelc/source/Problem.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

/// The checked model: every name is resolved and every rule of the language holds. The
/// emitters read nothing else, so they have no errors to report.
namespace modelc {

struct Type;

/// The class of a type, which decides how its objects are passed and stored.
enum class TypeClass {
    boolean, ///< bool
    number,  ///< U8, U16, U32, U64
    scalar,  ///< a class that is passed by value, like a number
    value,   ///< a class that is passed by reference to const
    text,    ///< a string class: passed by value where it is stored
    entity,  ///< shared through Vex::Ptr
};

/// A reference to a type.
struct TypeRef {
    std::string name; ///< as spelled in the model and in C++
    TypeClass kind = TypeClass::value;
    Type const * declared = nullptr;  ///< null unless this model declares the type
    std::string importedKey = {};     ///< the key attribute of an imported value
    std::string importedKeyType = {}; ///< the type of that attribute
};

/// The kinds of attribute, named as in the framework's reflection.
enum class AttributeKind {
    constructorArgument,
    plain,
    constant,
    entityPointer,
    entityPointerPlain,
    ownedEntity,
    valueCollection,
    setCollection,
    hashedSetCollection,
    ownedEntityCollection,
    sharedEntityCollection,
    method,
};

struct Parameter {
    std::string name;
    TypeRef type;
};

struct Attribute {
    std::string name;
    AttributeKind kind = AttributeKind::plain;
    unsigned number = 0;      ///< identifies the attribute in reflection
    TypeRef type = {};        ///< of the value, or of a collection's elements
    TypeRef key = {};         ///< of a collection's keys
    std::string keyAttribute; ///< the element attribute that is the key; empty if none is
    bool fromConstructor = false;
    bool settable = false;
    std::string initial; ///< a C++ expression; empty for the type's own default
    std::vector<Parameter> parameters;
    std::vector<std::string> doc;
    Location at;
};

struct Type {
    std::string name;
    bool entity = false;
    Type const * base = nullptr;
    bool factory = false;
    bool creator = false;
    std::vector<Attribute> attributes;          ///< its own, in declaration order
    std::vector<Attribute const *> constructor; ///< all arguments, the base's first
    std::size_t baseArguments = 0;              ///< how many of them are passed to the base
    std::vector<std::string> doc;
    Location at;
};

struct Model {
    std::string space; ///< the C++ namespace
    std::vector<std::string> headers;
    std::deque<Type> types;                ///< in file order
    std::vector<Type const *> definitions; ///< in an order in which C++ can define them
    std::vector<Type const *> registration;
};

bool isCollection(AttributeKind kind) noexcept;

/// Whether one of the type's own attributes is a collection.
bool holdsCollection(Type const & type) noexcept;

/// The attribute with that name, own or inherited; null if there is none.
Attribute const * findAttribute(Type const & type, std::string_view name) noexcept;

} // namespace modelc
