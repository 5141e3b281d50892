#pragma once

#include "modelc/syntax/Tree.h"

#include <string_view>

namespace modelc {

/// Reads a model file into its syntax tree. Raises `SyntaxError` where the text stops being
/// a model.
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
/// The kind of an import says how the type is handed over: an entity is shared through a
/// pointer to const, a value goes by reference to const, a scalar like a number, a text by
/// value into what keeps it.
///
/// No word is reserved: each has its meaning only where the rules above name it.
tree::File parse(std::string_view source);

} // namespace modelc
