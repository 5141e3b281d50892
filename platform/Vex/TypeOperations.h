#pragma once

#include "Vex/AnyIterator.h"
#include "Vex/AnyValue.h"
#include "Vex/Type.h"

#include <vector>

/// Operations on objects whose types the caller does not know. A generic tool finds the
/// record of a type in the type table or through an object, and the operations through
/// the record; all arguments and results are boxed.
namespace [[gnu::visibility("default")]] Vex {

/// The operations on attributes.
enum class Operation : U8 { get, set, insert, remove, clear, lookup, count, iterate };

/// The operation's name in error messages, "insert" for example.
std::string_view operationText(Operation operation) noexcept;

/// Whether attributes of this kind have the operation.
bool hasOperation(AttributeKind kind, Operation operation) noexcept;

/// Values in order: constructor arguments, or the arguments of one operation.
using AnyValues = std::vector<AnyValue>;

/// The operations of one attribute. Operations that its kind does not have are never
/// called.
class AttributeOperations {
public:
    /// The attribute's number in the record.
    constexpr U32 number() const noexcept { return number_; }

    virtual AnyValue get(AnyValue const & object) const;
    virtual void set(AnyValue & object, AnyValue const & value) const;
    virtual AnyValue insert(AnyValue & object, AnyValues const & arguments) const;
    virtual AnyValue remove(AnyValue & object, AnyValues const & key) const;
    virtual void clear(AnyValue & object) const;
    virtual AnyValue lookup(AnyValue const & object, AnyValue const & key) const;
    virtual std::size_t count(AnyValue const & object) const;
    virtual AnyIterator iterate(AnyValue const & object) const;

protected:
    constexpr explicit AttributeOperations(U32 number) noexcept : number_(number) {}

    ~AttributeOperations() = default;

private:
    U32 number_;
};

/// The operations of one type; `Type::operations` of its record leads here. `TypeImpl<T>`
/// implements them.
///
/// An object is an `AnyValue` that holds a `Ptr` to an entity of the type or a type
/// derived from it, or a value of the type, which is changed in place. An entity held
/// through a pointer to a constant is read-only, and so is everything reached through it.
///
/// Attributes are identified by their numbers in the record, including those of the base.
/// An unknown number, an operation that the kind of attribute does not have, or arguments
/// that do not fit raise an `OperandError` and change nothing. Its text is one line that
/// names the type, the attribute, the operation and what would be right. Errors of the
/// operation itself, such as a `ReinstantiationError`, pass through.
class TypeOperations {
public:
    /// A new object from constructor arguments, in the order of the record; an entity is
    /// returned as a `Ptr`, notification-active. This includes types whose objects are
    /// otherwise created only by an owning collection.
    AnyValue construct(AnyValues const & arguments) const;

    /// The value of a constructor argument, a plain attribute or a constant, or the pointer
    /// to an owned entity, null if there is none.
    AnyValue get(AnyValue const & object, U32 number) const;

    /// Sets a plain attribute.
    void set(AnyValue & object, U32 number, AnyValue const & value) const;

    /// Inserts the arguments, depending on the kind of attribute:
    ///
    ///     owned entity              none: the entity, made if there is none
    ///     value collection          the value, in place of the one with its key
    ///     set                       key and bool
    ///     owned entity collection   the element's constructor arguments, key first: the
    ///                               element, made if there is none
    ///     shared entity collection  key and pointer, or the pointer alone where the key is
    ///                               the entity's own: the pointer. A null pointer removes
    ///                               the entry of the key
    ///
    /// Returns the entity if there is one, otherwise an empty `AnyValue`.
    AnyValue insert(AnyValue & object, U32 number, AnyValues const & arguments) const;

    /// Removes the entry under the key and returns what it held; an absent key changes
    /// nothing and returns an empty `AnyValue`. Without a key, drops an owned entity.
    AnyValue remove(AnyValue & object, U32 number, AnyValues const & key) const;

    /// Removes every entry of a collection.
    void clear(AnyValue & object, U32 number) const;

    /// What the collection holds under the key: a value, a pointer or the bool of a set;
    /// an empty `AnyValue` if there is no entry.
    AnyValue lookup(AnyValue const & object, U32 number, AnyValue const & key) const;

    /// The number of entries of a collection.
    std::size_t count(AnyValue const & object, U32 number) const;

    /// Iterates over a collection in its order. The iterator shares an entity, but copies a
    /// value: it then walks over the collection as it is now.
    AnyIterator iterate(AnyValue const & object, U32 number) const;

    /// The string form of a value of the type. Raises an `OperandError` if the type has
    /// none; no entity type has one.
    String stringForm(AnyValue const & object) const;

    /// Reads a value from its string form. Raises an `OperandError` for an entity type, and
    /// the type's own error for invalid text. A value type that holds a collection has no
    /// reader: calling this for one ends the process with a failed assertion.
    AnyValue fromStringForm(String const & text) const;

protected:
    constexpr TypeOperations() noexcept = default;

    ~TypeOperations() = default;

private:
    virtual Type const & type() const noexcept = 0;

    /// The type's own attribute with that number, or null.
    virtual AttributeOperations const * attribute(U32 number) const noexcept = 0;

    virtual AnyValue constructed(AnyValues const & arguments) const = 0;
    virtual std::optional<String> toText(AnyValue const & object) const = 0;
    virtual AnyValue fromText(String const & text) const = 0;

    template <class Ask>
    auto ask(AnyValue const & object, U32 number, Operation operation, Ask question) const;

    AttributeOperations const & ownOrInherited(U32 number) const;
};

} // namespace Vex
