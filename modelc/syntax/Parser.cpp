#include "modelc/syntax/Parser.h"

#include "modelc/source/Spelling.h"
#include "modelc/syntax/Lexer.h"

#include <algorithm>
#include <utility>

namespace modelc {

namespace {

class Parser {
public:
    explicit Parser(std::string_view source) : tokens_(tokenize(source)) {}

    tree::File file() {
        tree::File result;
        expectWord("namespace", "expected 'namespace NAME' at the start of the model");
        result.space = name();
        while (!at(TokenKind::end)) {
            auto doc = docLines();
            if (atWord("import") && doc.empty()) {
                result.imports.push_back(import());
            } else if (atWord("entity") || atWord("value")) {
                result.types.push_back(type(std::move(doc)));
            } else if (atWord("registration") && doc.empty()) {
                registration(result);
                return result;
            } else {
                fail(doc.empty() ? "expected 'import', 'entity', 'value' or 'registration'"
                                 : "expected 'entity' or 'value' after the '///' lines");
            }
        }
        result.registrationAt = current().at;
        return result;
    }

private:
    Token const & current() const { return tokens_[position_]; }

    /// The token `count` positions ahead, or the end of the file.
    Token const & ahead(std::size_t count) const {
        return tokens_[std::min(position_ + count, tokens_.size() - 1)];
    }

    bool at(TokenKind kind) const { return current().kind == kind; }

    bool atWord(std::string_view word) const {
        return at(TokenKind::word) && current().text == word;
    }

    [[noreturn]] void fail(std::string const & expected) const {
        throw SyntaxError{{current().at, expected + ", found " + describe(current())}};
    }

    Token take() { return tokens_[position_++]; }

    bool takeIf(TokenKind kind) {
        bool const matches = at(kind);
        position_ += matches ? 1 : 0;
        return matches;
    }

    bool takeIfWord(std::string_view word) {
        bool const matches = atWord(word);
        position_ += matches ? 1 : 0;
        return matches;
    }

    void expect(TokenKind kind, std::string const & context) {
        if (!takeIf(kind)) {
            fail("expected " + describe(kind) + " " + context);
        }
    }

    void expectWord(std::string_view word, std::string const & expected) {
        if (!takeIfWord(word)) {
            fail(expected);
        }
    }

    tree::Name word(std::string const & what) {
        if (!at(TokenKind::word)) {
            fail("expected " + what);
        }
        Token token = take();
        return {std::move(token.text), token.at};
    }

    tree::Name name(std::string const & what = "a name") {
        tree::Name whole = word(what);
        while (takeIf(TokenKind::colonColon)) {
            whole.text += "::" + word("a name after '::'").text;
        }
        return whole;
    }

    std::vector<std::string> docLines() {
        std::vector<std::string> lines;
        while (at(TokenKind::doc)) {
            lines.push_back(take().text);
        }
        return lines;
    }

    /// Reads items separated by commas, up to and including the closing parenthesis.
    template <class Item>
    auto parenthesised(Item item) {
        std::vector<decltype(item())> items;
        if (takeIf(TokenKind::closeParen)) {
            return items;
        }
        do {
            items.push_back(item());
        } while (takeIf(TokenKind::comma));
        if (!takeIf(TokenKind::closeParen)) {
            fail("expected ',' or ')'");
        }
        return items;
    }

    tree::Import import() {
        take();
        tree::Import result;
        result.kind = word("'entity', 'value', 'scalar' or 'text' after 'import'");
        result.type = name("the imported type");
        if (takeIf(TokenKind::openBracket)) {
            result.keyAttribute = word("the key attribute of '" + result.type.text + "'");
            expect(TokenKind::colon, "and the type of the key");
            result.keyType = name("the type of the key");
            expect(TokenKind::closeBracket, "after the key");
        }
        expectWord("from", "expected 'from \"HEADER\"' after the imported type");
        if (!at(TokenKind::text)) {
            fail("expected the header of '" + result.type.text + "' in quotes");
        }
        result.header = take().text;
        return result;
    }

    tree::Type type(std::vector<std::string> doc) {
        tree::Type result;
        result.doc = std::move(doc);
        result.entity = take().text == "entity";
        result.name = word("the name of the type");
        expect(TokenKind::openParen, "and the constructor arguments of '" + result.name.text + "'");
        result.constructor = parenthesised([&] { return word("the name of an attribute"); });
        if (takeIf(TokenKind::colon)) {
            result.base = word("the base of '" + result.name.text + "'");
        }
        if (takeIfWord("with")) {
            do {
                result.extras.push_back(word("'factory' or 'creator'"));
            } while (takeIf(TokenKind::comma));
        }
        expect(TokenKind::openBrace, "and the attributes of '" + result.name.text + "'");
        while (!takeIf(TokenKind::closeBrace)) {
            result.attributes.push_back(member());
        }
        return result;
    }

    tree::Attribute member() {
        auto doc = docLines();
        bool const isMethod = atWord("method") && ahead(1).kind == TokenKind::word;
        if (!at(TokenKind::word)) {
            fail(doc.empty() ? "expected an attribute, a method or '}'"
                             : "expected an attribute or a method after the '///' lines");
        }
        tree::Attribute result = isMethod ? method() : attribute();
        result.doc = std::move(doc);
        return result;
    }

    tree::Attribute method() {
        take();
        tree::Attribute result;
        result.shape = tree::Shape::method;
        result.name = word("the name of the method");
        expect(TokenKind::openParen, "and the arguments of '" + result.name.text + "'");
        result.arguments = parenthesised([&] { return argument(); });
        return result;
    }

    tree::Argument argument() {
        tree::Argument result;
        result.name = word("the name of an argument");
        expect(TokenKind::colon, "and the type of '" + result.name.text + "'");
        result.shared = takeIfWord("shared");
        result.type = name("the type of '" + result.name.text + "'");
        return result;
    }

    tree::Attribute attribute() {
        tree::Attribute result;
        result.name = word("an attribute");
        expect(TokenKind::colon, "and the type of '" + result.name.text + "'");
        if (atWord("settable")) {
            result.settable = take().at;
        }
        result.shape = shape();
        if (result.shape == tree::Shape::set || result.shape == tree::Shape::hashedSet) {
            expect(TokenKind::openBracket, "and the type of the members");
            result.key = name("the type of the members");
            expect(TokenKind::closeBracket, "after the type of the members");
        } else {
            rejectUnknownModifier();
            result.type = name("the type of '" + result.name.text + "'");
            if (takeIf(TokenKind::openBracket)) {
                result.key = name("the key of '" + result.name.text + "'");
                expect(TokenKind::closeBracket, "after the key");
            }
        }
        if (takeIf(TokenKind::equals)) {
            result.initial = literal();
        }
        return result;
    }

    tree::Shape shape() {
        if (takeIfWord("constant")) {
            return tree::Shape::constant;
        }
        if (takeIfWord("owned")) {
            return tree::Shape::owned;
        }
        if (takeIfWord("shared")) {
            return tree::Shape::shared;
        }
        if (takeIfWord("hashed")) {
            expectWord("set", "expected 'set' after 'hashed' (only sets are hashed)");
            return tree::Shape::hashedSet;
        }
        return takeIfWord("set") ? tree::Shape::set : tree::Shape::plain;
    }

    /// A lower-case word followed by a type was meant to be a modifier; without this check it
    /// would be taken for the type.
    void rejectUnknownModifier() const {
        bool const lowerCase = at(TokenKind::word) && current().text != "bool" &&
                               current().text[0] >= 'a' && current().text[0] <= 'z';
        bool const typeFollows = ahead(1).kind == TokenKind::word &&
                                 ahead(2).kind != TokenKind::colon &&
                                 ahead(1).at.line == current().at.line;
        if (lowerCase && typeFollows) {
            static std::vector<std::string> const modifiers{"settable", "constant", "owned",
                                                            "shared",   "set",      "hashed"};
            throw SyntaxError{{current().at, "unknown modifier '" + current().text + "'" +
                                                 didYouMean(current().text, modifiers)}};
        }
    }

    tree::Literal literal() {
        Location const place = current().at;
        if (at(TokenKind::number)) {
            return {tree::Literal::Kind::number, take().text, place};
        }
        if (at(TokenKind::text)) {
            return {tree::Literal::Kind::text, take().text, place};
        }
        if (atWord("true") || atWord("false")) {
            return {tree::Literal::Kind::boolean, take().text, place};
        }
        fail("expected a number, a string, 'true' or 'false' after '='");
    }

    void registration(tree::File & result) {
        result.registrationAt = take().at;
        expect(TokenKind::openBrace, "and the types in the order of their registration");
        while (!takeIf(TokenKind::closeBrace)) {
            result.registration.push_back(word("the name of a type or '}'"));
        }
        if (!at(TokenKind::end)) {
            fail("expected the end of the file after the registration");
        }
    }

    std::vector<Token> tokens_;
    std::size_t position_ = 0;
};

} // namespace

tree::File parse(std::string_view source) {
    return Parser(source).file();
}

} // namespace modelc
