#pragma once

#include "Vex/TypeOperations.h"
#include "outfmt/Printer.h"

/// How the objects of the model are shown. Everything comes from reflection.
namespace vxshow::cli::command {

/// A line for each attribute and for each entry of a collection; what belongs to an object or
/// a collection follows indented. Texts are made printable: one line is one attribute,
/// whatever bytes a name has.
///
///     VxlanController::Cli::SwitchDir #3
///       switchList : Switch[Vex::Name] = 1 entry
///         [leaf1] = VxlanController::Cli::Switch #4
///           switchId : Vex::Name = leaf1
///
/// An entity is shown once; "see #4" stands wherever else it is reached.
void printObjects(outfmt::Printer & printer, Vex::AnyValues const & objects);

/// The same as one document:
///
///     { "objects": [ OBJECT, ... ] }
///     OBJECT = { "type": NAME, "object": NUMBER, "attributes": { NAME: VALUE, ... } }
///     VALUE  = BOOL | NUMBER | TEXT | OBJECT | [ { "key": TEXT, "value": VALUE }, ... ]
///            | { "object": NUMBER }    an object that was shown before
///            | { "null": true }        a null pointer
///            | { "type": NAME }        something that has no attributes and no text
///
/// "object" is absent from a model value. Numbers of the platform's types are texts.
void renderObjectsJson(outfmt::Printer & printer, Vex::AnyValues const & objects);

} // namespace vxshow::cli::command
