#pragma once

#include "modelc/source/Problem.h"

#include <string>

namespace modelc {

enum class TokenKind {
    word,   ///< letters, digits and underscores, not starting with a digit
    number, ///< decimal digits
    text,   ///< a string, without its quotes and escapes
    doc,    ///< a line that starts with three slashes, without them
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

/// The smallest piece of a model. Blanks, line ends and comments of two slashes separate
/// tokens and mean nothing else.
struct Token {
    TokenKind kind;
    std::string text;
    Location at;
};

/// How a message names what was read: 'word', a string, the end of the file.
std::string shown(Token const & token);

/// How a message names what was expected.
std::string shown(TokenKind kind);

} // namespace modelc
