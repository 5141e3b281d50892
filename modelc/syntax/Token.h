#pragma once

#include "modelc/source/Problem.h"

#include <string>

namespace modelc {

enum class TokenKind {
    word,   ///< letters, digits and underscores, not starting with a digit
    number, ///< decimal digits
    text,   ///< a string, without its quotes and escapes
    doc,    ///< a `///` line, without the slashes
    openParen,
    closeParen,
    openBrace,
    closeBrace,
    openBracket,
    closeBracket,
    colon,
    colonColon,
    comma,
    equals,
    end, ///< the end of the file
};

/// The smallest unit of a model file. Blanks, line ends and `//` comments separate tokens and
/// have no other meaning.
struct Token {
    TokenKind kind;
    std::string text;
    Location at;
};

/// How an error message names a token that was found: 'word', a string, the end of the file.
std::string describe(Token const & token);

/// How an error message names the kind of token that was expected.
std::string describe(TokenKind kind);

} // namespace modelc
