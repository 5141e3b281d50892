#include "modelc/syntax/Token.h"

namespace modelc {

std::string describe(Token const & token) {
    switch (token.kind) {
    case TokenKind::word:
    case TokenKind::number:
        return "'" + token.text + "'";
    default:
        return describe(token.kind);
    }
}

std::string describe(TokenKind kind) {
    switch (kind) {
    case TokenKind::word:
        return "a name";
    case TokenKind::number:
        return "a number";
    case TokenKind::text:
        return "a string";
    case TokenKind::doc:
        return "a '///' line";
    case TokenKind::openParen:
        return "'('";
    case TokenKind::closeParen:
        return "')'";
    case TokenKind::openBrace:
        return "'{'";
    case TokenKind::closeBrace:
        return "'}'";
    case TokenKind::openBracket:
        return "'['";
    case TokenKind::closeBracket:
        return "']'";
    case TokenKind::colon:
        return "':'";
    case TokenKind::colonColon:
        return "'::'";
    case TokenKind::comma:
        return "','";
    case TokenKind::equals:
        return "'='";
    case TokenKind::end:
        return "the end of the file";
    }
    return "nothing";
}

} // namespace modelc
