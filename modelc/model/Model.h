#pragma once

#include "modelc/source/Problem.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

/// The model as it is meant: every name resolved, every rule kept. The emitters read this
/// and nothing else, so they have no errors to report.
namespace modelc {

struct Type;

/// What a type is, which says how it is handed over and held.
enum class TypeClass {
    boolean, ///< bool
    number,  ///< U8, U16, U32, U64
    scalar,  ///< a class that is passed like a number
    value,   ///< a class that is passed by reference to const
    text,    ///< a string class: passed by value into what keeps it
    entity,  ///< shared through Vex::Ptr
};

/// A type where it is used.
struct TypeRef {
    std::string name; ///< as the model and C++ spell it
    TypeClass kind = TypeClass::value;
    Type const * declared = nullptr;  ///< the model's own type, else null
    std::string importedKey = {};     ///< of an imported value: its key attribute...
    std::string importedKeyType = {}; ///< ...and the type of that
};

/// The kinds of attribute that the framework's reflection knows, under its names.
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
    unsigned number = 0;      ///< in reflection
    TypeRef type = {};        ///< of value or element
    TypeRef key = {};         ///< of a collection
    std::string keyAttribute; ///< the element's attribute that is the key, if one is
    bool fromConstructor = false;
    bool settable = false;
    std::string initial; ///< a C++ expression, empty for the type's own default
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
    std::size_t baseArguments = 0;              ///< how many of them go to the base
    std::vector<std::string> doc;
    Location at;
};

struct Model {
    std::string space; ///< the C++ namespace
    std::vector<std::string> headers;
    std::deque<Type> types;                ///< in the order of the file
    std::vector<Type const *> definitions; ///< in an order in which C++ can define them
    std::vector<Type const *> registration;
};

bool isCollection(AttributeKind kind) noexcept;

/// Whether the value or entity type has a collection of its own.
bool holdsCollection(Type const & type) noexcept;

/// The attribute of that name, own or inherited, or null.
Attribute const * findAttribute(Type const & type, std::string_view name) noexcept;

} // namespace modelc
