#pragma once

#include "modelc/syntax/Tree.h"

#include <string_view>

namespace modelc {

/// Parses a model file into a syntax tree. Throws `SyntaxError` at the first token that does
/// not fit the grammar:
///
///     FILE      = "namespace" NAME { IMPORT | TYPE } [ "registration" "{" { WORD } "}" ]
///     IMPORT    = "import" KIND NAME [ "[" WORD ":" NAME "]" ] "from" STRING
///     KIND      = "entity" | "value" | "scalar" | "text"
///     TYPE      = { DOC } ( "entity" | "value" ) WORD "(" [ WORD { "," WORD } ] ")"
///                 [ ":" WORD ] [ "with" WORD { "," WORD } ] "{" { ATTRIBUTE | METHOD } "}"
///     ATTRIBUTE = { DOC } WORD ":" [ "settable" ]
///                 ( [ "constant" | "owned" | "shared" ] NAME [ "[" NAME "]" ]
///                 | [ "hashed" ] "set" "[" NAME "]" ) [ "=" LITERAL ]
///     METHOD    = { DOC } "method" WORD "(" [ ARGUMENT { "," ARGUMENT } ] ")"
///     ARGUMENT  = WORD ":" [ "shared" ] NAME
///     NAME      = WORD { "::" WORD }
///
/// The kind of an import decides how the type is passed: an entity is shared through a
/// pointer to const, a value is passed by reference to const, a scalar by value, and a text
/// by value where it is stored.
///
/// No word is reserved: each has a meaning only where the grammar names it.
tree::File parse(std::string_view source);

} // namespace modelc
