#include "modelc/syntax/Parser.h"

#include "modelc/source/Spelling.h"
#include "modelc/syntax/Lexer.h"

#include <algorithm>
#include <utility>

namespace modelc {

namespace {

class Parser {
public:
    explicit Parser(std::string_view source) : tokens_(tokens(source)) {}

    tree::File file() {
        tree::File read;
        expectWord("namespace", "a model starts with 'namespace NAME'");
        read.space = name();
        while (!at(TokenKind::end)) {
            auto doc = docLines();
            if (atWord("import") && doc.empty()) {
                read.imports.push_back(import());
            } else if (atWord("entity") || atWord("value")) {
                read.types.push_back(type(std::move(doc)));
            } else if (atWord("registration") && doc.empty()) {
                registration(read);
                return read;
            } else {
                fail(doc.empty() ? "expected 'import', 'entity', 'value' or 'registration'"
                                 : "expected 'entity' or 'value' behind the '///' lines");
            }
        }
        read.registrationAt = current().at;
        return read;
    }

private:
    Token const & current() const { return tokens_[position_]; }

    /// The token that many places on, or the end.
    Token const & ahead(std::size_t places) const {
        return tokens_[std::min(position_ + places, tokens_.size() - 1)];
    }

    bool at(TokenKind kind) const { return current().kind == kind; }

    bool atWord(std::string_view word) const {
        return at(TokenKind::word) && current().text == word;
    }

    [[noreturn]] void fail(std::string const & expected) const {
        throw SyntaxError{{current().at, expected + ", found " + shown(current())}};
    }

    Token take() { return tokens_[position_++]; }

    bool takeIf(TokenKind kind) {
        bool const there = at(kind);
        position_ += there ? 1 : 0;
        return there;
    }

    bool takeIfWord(std::string_view word) {
        bool const there = atWord(word);
        position_ += there ? 1 : 0;
        return there;
    }

    void expect(TokenKind kind, std::string const & where) {
        if (!takeIf(kind)) {
            fail("expected " + shown(kind) + " " + where);
        }
    }

    void expectWord(std::string_view word, std::string const & why) {
        if (!takeIfWord(word)) {
            fail(why);
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
            whole.text += "::" + word("a name behind '::'").text;
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

    /// What `item` reads, separated by commas, up to and with the closing parenthesis.
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
        tree::Import read;
        read.kind = word("'entity', 'value', 'scalar' or 'text' behind 'import'");
        read.type = name("the imported type");
        if (takeIf(TokenKind::openBracket)) {
            read.keyAttribute = word("the key attribute of '" + read.type.text + "'");
            expect(TokenKind::colon, "and the type of the key");
            read.keyType = name("the type of the key");
            expect(TokenKind::closeBracket, "behind the key");
        }
        expectWord("from", "expected 'from \"HEADER\"' behind the imported type");
        if (!at(TokenKind::text)) {
            fail("expected the header of '" + read.type.text + "' in quotes");
        }
        read.header = take().text;
        return read;
    }

    tree::Type type(std::vector<std::string> doc) {
        tree::Type read;
        read.doc = std::move(doc);
        read.entity = take().text == "entity";
        read.name = word("the name of the type");
        expect(TokenKind::openParen, "and the constructor arguments of '" + read.name.text + "'");
        read.constructor = parenthesised([&] { return word("the name of an attribute"); });
        if (takeIf(TokenKind::colon)) {
            read.base = word("the base of '" + read.name.text + "'");
        }
        if (takeIfWord("with")) {
            do {
                read.extras.push_back(word("'factory' or 'creator'"));
            } while (takeIf(TokenKind::comma));
        }
        expect(TokenKind::openBrace, "and the attributes of '" + read.name.text + "'");
        while (!takeIf(TokenKind::closeBrace)) {
            read.attributes.push_back(member());
        }
        return read;
    }

    tree::Attribute member() {
        auto doc = docLines();
        bool const isMethod = atWord("method") && ahead(1).kind == TokenKind::word;
        if (!at(TokenKind::word)) {
            fail(doc.empty() ? "expected an attribute, a method or '}'"
                             : "expected an attribute or a method behind the '///' lines");
        }
        tree::Attribute read = isMethod ? method() : attribute();
        read.doc = std::move(doc);
        return read;
    }

    tree::Attribute method() {
        take();
        tree::Attribute read;
        read.shape = tree::Shape::method;
        read.name = word("the name of the method");
        expect(TokenKind::openParen, "and the arguments of '" + read.name.text + "'");
        read.arguments = parenthesised([&] { return argument(); });
        return read;
    }

    tree::Argument argument() {
        tree::Argument read;
        read.name = word("the name of an argument");
        expect(TokenKind::colon, "and the type of '" + read.name.text + "'");
        read.shared = takeIfWord("shared");
        read.type = name("the type of '" + read.name.text + "'");
        return read;
    }

    tree::Attribute attribute() {
        tree::Attribute read;
        read.name = word("an attribute");
        expect(TokenKind::colon, "and the type of '" + read.name.text + "'");
        if (atWord("settable")) {
            read.settable = take().at;
        }
        read.shape = shape();
        if (read.shape == tree::Shape::set || read.shape == tree::Shape::hashedSet) {
            expect(TokenKind::openBracket, "and the type of the members");
            read.key = name("the type of the members");
            expect(TokenKind::closeBracket, "behind the type of the members");
        } else {
            rejectUnknownModifier();
            read.type = name("the type of '" + read.name.text + "'");
            if (takeIf(TokenKind::openBracket)) {
                read.key = name("the key of '" + read.name.text + "'");
                expect(TokenKind::closeBracket, "behind the key");
            }
        }
        if (takeIf(TokenKind::equals)) {
            read.initial = literal();
        }
        return read;
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
            expectWord("set", "expected 'set' behind 'hashed'; nothing else is hashed");
            return tree::Shape::hashedSet;
        }
        return takeIfWord("set") ? tree::Shape::set : tree::Shape::plain;
    }

    /// A small word with a type behind it was meant to be a modifier; left to itself, it
    /// would be taken for the type.
    void rejectUnknownModifier() const {
        bool const small = at(TokenKind::word) && current().text != "bool" &&
                           current().text[0] >= 'a' && current().text[0] <= 'z';
        bool const typeBehind = ahead(1).kind == TokenKind::word &&
                                ahead(2).kind != TokenKind::colon &&
                                ahead(1).at.line == current().at.line;
        if (small && typeBehind) {
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
        fail("expected a number, a string, 'true' or 'false' behind '='");
    }

    void registration(tree::File & read) {
        read.registrationAt = take().at;
        expect(TokenKind::openBrace, "and the types in the order of their registration");
        while (!takeIf(TokenKind::closeBrace)) {
            read.registration.push_back(word("the name of a type or '}'"));
        }
        if (!at(TokenKind::end)) {
            fail("expected the end of the file behind the registration");
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
