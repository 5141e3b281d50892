#pragma once

#include "Vex/TypeOperations.h"

#include <cstddef>

namespace vxshow::cli::command {

/// Where in its owner a value is.
struct Place {
    Vex::Attribute const * attribute = nullptr; ///< null for an object that the walk starts at
    Vex::AnyValue const * key = nullptr;        ///< of an entry of a collection, else null
};

/// What a walk over objects finds, in the order of the walk. Collections and objects nest.
class ObjectVisitor {
public:
    ObjectVisitor() = default;
    ObjectVisitor(ObjectVisitor const &) = delete;
    ObjectVisitor & operator=(ObjectVisitor const &) = delete;
    virtual ~ObjectVisitor() = default;

    /// A value without attributes of its own: a platform value, a null pointer, or a pointer
    /// to an entity that is not of the model.
    virtual void value(Place const & place, Vex::AnyValue const & value) = 0;

    /// An entity that the walk has reached before, and its number.
    virtual void reference(Place const & place, Vex::Type const & type, std::size_t number) = 0;

    /// The start of an object's attributes. Entities are numbered from 1 in the order in which
    /// the walk reaches them; a model value has the number 0.
    virtual void beginObject(Place const & place, Vex::Type const & type, std::size_t number) = 0;
    virtual void endObject() = 0;

    /// The start of a collection's entries.
    virtual void beginCollection(Vex::Attribute const & attribute, std::size_t count) = 0;
    virtual void endCollection() = 0;
};

/// Visits the objects `roots` and all that can be reached from them, by reflection alone: each
/// entity once, at the first place that leads to it, so that a cycle ends. Methods are left
/// out.
///
/// Its use of the stack does not depend on how deep objects nest. Raises what the visitor
/// raises. The objects must not change during the walk.
void walkObjects(Vex::AnyValues const & roots, ObjectVisitor & visitor);

} // namespace vxshow::cli::command
