#pragma once

#include "Vex/AnyIterator.h"
#include "Vex/AnyValue.h"
#include "Vex/Type.h"

#include <vector>

/// Operating on objects of types that the caller does not know. A generic tool finds the
/// record of a type (in the type table, or through an object), and the operations through
/// the record; everything that it passes and gets is boxed.
namespace [[gnu::visibility("default")]] Vex {

/// What can be asked of an attribute.
enum class Operation : U8 { get, set, insert, remove, clear, lookup, count, iterate };

/// The operation as errors name it, "insert" for example.
std::string_view operationText(Operation operation) noexcept;

/// Whether attributes of that kind have the operation.
bool hasOperation(AttributeKind kind, Operation operation) noexcept;

/// Values in order: constructor arguments, or the arguments of one operation.
using AnyValues = std::vector<AnyValue>;

/// The operations of one attribute. Those that its kind does not have are never called.
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
/// An object is a box that holds a `Ptr` to an entity of the type or of one derived from
/// it, or a value of the type, which is changed within the box. An entity behind a pointer
/// to a constant can be read only, and so can what is reached through it.
///
/// Attributes are known by their numbers in the record, those of the base included. An
/// unknown number, an operation that the kind of attribute does not have, and arguments
/// that do not fit raise an `OperandError`: one line that names the type, the attribute,
/// what was asked and what would be right. Nothing has changed then. Errors of the
/// operation itself, such as a `ReinstantiationError`, pass through.
class TypeOperations {
public:
    /// A new object from constructor arguments, in the order of the record; an entity comes
    /// as a `Ptr`, notification-active. Types whose objects are else made by an owning
    /// collection alone are no exception.
    AnyValue construct(AnyValues const & arguments) const;

    /// The value of a constructor argument, a plain attribute or a constant, or the pointer
    /// to an owned entity, null while there is none.
    AnyValue get(AnyValue const & object, U32 number) const;

    /// Sets a plain attribute.
    void set(AnyValue & object, U32 number, AnyValue const & value) const;

    /// Inserts what the arguments say, by kind:
    ///
    ///     owned entity              none: the entity, made when there is none
    ///     value collection          the value, in place of the one with its key
    ///     set                       key and bool
    ///     owned entity collection   the element's constructor arguments, key first: the
    ///                               element, made when there is none
    ///     shared entity collection  key and pointer, or the pointer alone where the key is
    ///                               the entity's own: the pointer. A null pointer removes
    ///                               the entry of the key
    ///
    /// Returns the entity, where there is one, else nothing.
    AnyValue insert(AnyValue & object, U32 number, AnyValues const & arguments) const;

    /// Removes the entry under the key and returns what it held; an absent key changes
    /// nothing and returns nothing. Without a key, drops an owned entity.
    AnyValue remove(AnyValue & object, U32 number, AnyValues const & key) const;

    /// Removes every entry of a collection.
    void clear(AnyValue & object, U32 number) const;

    /// What the collection holds under the key, a value, a pointer or the bool of a set;
    /// nothing when there is no entry.
    AnyValue lookup(AnyValue const & object, U32 number, AnyValue const & key) const;

    /// The number of entries of a collection.
    std::size_t count(AnyValue const & object, U32 number) const;

    /// A walk over a collection in its order. It shares an entity; of a value it walks over
    /// the collection as it is now.
    AnyIterator iterate(AnyValue const & object, U32 number) const;

    /// The string form of a value of the type. Raises an `OperandError` when it has none, as
    /// no entity type has.
    String stringForm(AnyValue const & object) const;

    /// The value of which `text` is the string form. Raises an `OperandError` for an entity
    /// type, and what the type raises for any other text. A value type that holds a
    /// collection has no reader: asking it ends the process by a failed assertion.
    AnyValue fromStringForm(String const & text) const;

protected:
    constexpr TypeOperations() noexcept = default;

    ~TypeOperations() = default;

private:
    virtual Type const & type() const noexcept = 0;

    /// The type's own attribute of that number, or null.
    virtual AttributeOperations const * attribute(U32 number) const noexcept = 0;

    virtual AnyValue constructed(AnyValues const & arguments) const = 0;
    virtual std::optional<String> toText(AnyValue const & object) const = 0;
    virtual AnyValue fromText(String const & text) const = 0;

    template <class Ask>
    auto ask(AnyValue const & object, U32 number, Operation operation, Ask question) const;

    AttributeOperations const & ownOrInherited(U32 number) const;
};

} // namespace Vex
