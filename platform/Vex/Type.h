#pragma once

#include "Vex/Types.h"

#include <span>
#include <string_view>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// Attribute numbers start here: those of an entity type, those that a derived entity type
/// adds to its base's, and those of a value type.
inline constexpr U32 firstEntityAttribute = 130;
inline constexpr U32 firstDerivedAttribute = 258;
inline constexpr U32 firstValueAttribute = 2;

/// What an attribute is, which determines the operations that it has.
enum class AttributeKind : U8 {
    constructorArgument,    ///< immutable, set once: getter
    plain,                  ///< getter and setter
    constant,               ///< the same for every object, not stored: getter
    entityPointer,          ///< constructor argument, an entity owned elsewhere: getter
    entityPointerPlain,     ///< the same with a setter
    ownedEntity,            ///< created on demand: getter, find or create, drop
    valueCollection,        ///< values keyed by an attribute of their own
    setCollection,          ///< ordered set
    hashedSetCollection,    ///< hashed set
    ownedEntityCollection,  ///< owned entities keyed by a constructor argument
    sharedEntityCollection, ///< entities owned elsewhere
    method,                 ///< a procedure; reflection only lists it
};

/// The name of a kind as tools show it, "constructor argument" for example.
std::string_view kindText(AttributeKind kind) noexcept;

/// One attribute of a type, as reflection sees it.
struct Attribute {
    std::string_view name;
    U32 number;
    AttributeKind kind;
    /// Of the value or element (bool in a set), under its full name, or a method's arguments.
    std::string_view type;
    std::string_view key; ///< the key type of a collection, else empty
    std::string_view doc; ///< the model file's own lines
};

class TypeOperations;

/// The reflection record of a type, `_vexType` of each model type. Constant-initialised.
struct Type {
    enum class Kind : U8 { entity, value };

    std::string_view name; ///< full name: "VxlanController::Cli::VniStatus"
    Kind kind;
    Type const * base;                                      ///< null at a root
    std::span<Attribute const> attributes;                  ///< own ones, in declaration order
    std::span<std::string_view const> constructorArguments; ///< attribute names, in order
    std::string_view doc;
    /// The operations on objects of the type (TypeOperations.h); null for a type that is
    /// known only by name.
    TypeOperations const * operations = nullptr;

    /// The attribute with that name, own or inherited, or null.
    Attribute const * attribute(std::string_view attributeName) const noexcept;

    /// The attribute with that number, own or inherited, or null.
    Attribute const * attribute(U32 number) const noexcept;
};

/// Adds a type to the framework's type table. If the table has a type of that name, it
/// keeps that one.
void typeNodeIs(Type const & type);

/// All registered types in the order of their registration.
std::vector<Type const *> const & typeTable() noexcept;

/// The registered type with that full name, or null.
Type const * typeNode(std::string_view name) noexcept;

} // namespace Vex
