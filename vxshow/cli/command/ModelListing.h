#pragma once

#include "Vex/Type.h"
#include "outfmt/Printer.h"

#include <vector>

/// The listings of the model's types, made from their reflection records.
namespace vxshow::cli::command {

using ModelTypes = std::vector<Vex::Type const *>;

/// One line for each type. The number of attributes includes those of the bases.
void printTypes(outfmt::Printer & printer, ModelTypes const & types);

/// One type and a line for each of its attributes, including those of the bases, ordered by their
/// numbers. The comments of the model file follow each.
void printType(outfmt::Printer & printer, Vex::Type const & type);

/// All that the reflection records hold, as one document:
///
///     { "types": [ { "name", "kind": "entity" or "value", "base", "doc",
///                    "constructorArguments": [ NAME, ... ],
///                    "attributes": [ { "number", "name", "kind", "type", "key", "doc",
///                                      "inherited" }, ... ] }, ... ] }
///
/// "base" is absent for a type without a base, "key" for an attribute that is not a collection.
void renderTypesJson(outfmt::Printer & printer, ModelTypes const & types);

} // namespace vxshow::cli::command
