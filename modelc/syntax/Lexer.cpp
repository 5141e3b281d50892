#include "modelc/syntax/Lexer.h"

#include <cstdio>

namespace modelc {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isPrintable(char c) {
    return c >= ' ' && c <= '~';
}

class Lexer {
public:
    explicit Lexer(std::string_view source) : rest_(source) {}

    std::vector<Token> run() {
        std::vector<Token> found;
        for (skipToToken(); !rest_.empty(); skipToToken()) {
            found.push_back(next());
        }
        found.push_back({TokenKind::end, "", at_});
        return found;
    }

private:
    char peek(std::size_t ahead = 0) const { return ahead < rest_.size() ? rest_[ahead] : '\0'; }

    void step() {
        if (rest_.front() == '\n') {
            ++at_.line;
            at_.column = 1;
        } else {
            ++at_.column;
        }
        rest_.remove_prefix(1);
    }

    template <class Condition>
    std::string takeWhile(Condition condition) {
        std::string taken;
        while (!rest_.empty() && condition(peek())) {
            taken += peek();
            step();
        }
        return taken;
    }

    void skipToToken() {
        while (!rest_.empty()) {
            if (peek() == ' ' || peek() == '\t' || peek() == '\r' || peek() == '\n') {
                step();
            } else if (peek() == '/' && peek(1) == '/' && peek(2) != '/') {
                takeWhile([](char c) { return c != '\n'; });
            } else {
                return;
            }
        }
    }

    Token next() {
        Location const at = at_;
        if (startsWord(peek())) {
            return {TokenKind::word, takeWhile([](char c) { return startsWord(c) || isDigit(c); }),
                    at};
        }
        if (isDigit(peek())) {
            return {TokenKind::number, takeWhile(isDigit), at};
        }
        if (peek() == '"') {
            return {TokenKind::text, stringLiteral(), at};
        }
        if (rest_.starts_with("///")) {
            return {TokenKind::doc, doc(), at};
        }
        return {punctuation(), "", at};
    }

    std::string doc() {
        for (int slash = 0; slash < 3; ++slash) {
            step();
        }
        std::string line = takeWhile([](char c) { return c != '\n'; });
        line.erase(line.find_last_not_of(" \t\r") + 1);
        return line.starts_with(' ') ? line.substr(1) : line;
    }

    std::string stringLiteral() {
        Location const start = at_;
        std::string text;
        for (step(); peek() != '"'; step()) {
            if (rest_.empty() || peek() == '\n') {
                throw SyntaxError{
                    {start, "the string does not end on its line; the closing '\"' is missing"}};
            }
            if (peek() == '\\') {
                Location const escape = at_;
                step();
                if (peek() != '"' && peek() != '\\') {
                    throw SyntaxError{
                        {escape, "unknown escape in a string; only \\\" and \\\\ are allowed"}};
                }
            }
            text += peek();
        }
        step();
        return text;
    }

    TokenKind punctuation() {
        if (rest_.starts_with("::")) {
            step();
            step();
            return TokenKind::colonColon;
        }
        TokenKind const kind = singleCharacter(peek());
        step();
        return kind;
    }

    TokenKind singleCharacter(char c) const {
        switch (c) {
        case '(':
            return TokenKind::openParen;
        case ')':
            return TokenKind::closeParen;
        case '{':
            return TokenKind::openBrace;
        case '}':
            return TokenKind::closeBrace;
        case '[':
            return TokenKind::openBracket;
        case ']':
            return TokenKind::closeBracket;
        case ':':
            return TokenKind::colon;
        case ',':
            return TokenKind::comma;
        case '=':
            return TokenKind::equals;
        default:
            throw SyntaxError{{at_, unexpectedByte(c)}};
        }
    }

    static std::string unexpectedByte(char c) {
        if (isPrintable(c)) {
            return std::string("'") + c + "' has no meaning in a model";
        }
        char text[40];
        std::snprintf(text, sizeof text, "byte 0x%02x has no meaning in a model",
                      static_cast<unsigned>(static_cast<unsigned char>(c)));
        return text;
    }

    std::string_view rest_;
    Location at_;
};

} // namespace

std::vector<Token> tokenize(std::string_view source) {
    return Lexer(source).run();
}

} // namespace modelc
