#pragma once

#include "Vex/Type.h"
#include "outfmt/Printer.h"

#include <vector>

/// How the types of the model are shown. Everything comes from their reflection records.
namespace vxshow::cli::command {

using ModelTypes = std::vector<Vex::Type const *>;

/// A line for each type. Attributes are counted with those of the bases.
void printTypes(outfmt::Printer & printer, ModelTypes const & types);

/// One type: what it is, and a line for each attribute, those of the bases included, in the
/// order of their numbers; the model's own words stand below.
void printType(outfmt::Printer & printer, Vex::Type const & type);

/// All that the records of the types say, as one document:
///
///     { "types": [ { "name", "kind": "entity" or "value", "base", "doc",
///                    "constructorArguments": [ NAME, ... ],
///                    "attributes": [ { "number", "name", "kind", "type", "key", "doc",
///                                      "inherited" }, ... ] }, ... ] }
///
/// "base" is absent from a type without one, "key" from an attribute that is no collection.
void renderTypesJson(outfmt::Printer & printer, ModelTypes const & types);

} // namespace vxshow::cli::command
