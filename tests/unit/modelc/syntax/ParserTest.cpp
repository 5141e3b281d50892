#include "modelc/syntax/Parser.h"

#include <gtest/gtest.h>

namespace modelc {

namespace {

std::string errorOf(std::string_view source) {
    try {
        parse(source);
    } catch (SyntaxError const & error) {
        return std::to_string(error.problem.at.line) + ":" +
               std::to_string(error.problem.at.column) + ": " + error.problem.text;
    }
    return "no error";
}

tree::Attribute attributeOf(std::string const & text) {
    return parse("namespace N\nentity E() { " + text + " }").types.at(0).attributes.at(0);
}

} // namespace

TEST(Parser, ReadsAFileFromTopToBottom) {
    auto const file = parse("namespace A::B\n"
                            "import value C::D from \"C/D.h\"\n"
                            "import value C::E[key : C::D] from \"C/E.h\"\n"
                            "/// One.\n"
                            "/// Two.\n"
                            "entity F(a, b) : G with creator, factory {\n"
                            "    /// About a.\n"
                            "    a : C::D\n"
                            "    b : U8 = 7\n"
                            "    /// About m.\n"
                            "    method m(x : U8, y : shared F)\n"
                            "}\n"
                            "value V() { }\n"
                            "registration { F V }\n");
    EXPECT_EQ(file.space.text, "A::B");
    ASSERT_EQ(file.imports.size(), 2U);
    EXPECT_EQ(file.imports[0].kind.text, "value");
    EXPECT_EQ(file.imports[0].type.text, "C::D");
    EXPECT_EQ(file.imports[0].header, "C/D.h");
    EXPECT_FALSE(file.imports[0].keyAttribute);
    EXPECT_EQ(file.imports[1].keyAttribute->text, "key");
    EXPECT_EQ(file.imports[1].keyType.text, "C::D");
    ASSERT_EQ(file.types.size(), 2U);
    auto const & type = file.types[0];
    EXPECT_TRUE(type.entity);
    EXPECT_EQ(type.name.text, "F");
    EXPECT_EQ(type.doc, (std::vector<std::string>{"One.", "Two."}));
    ASSERT_EQ(type.constructor.size(), 2U);
    EXPECT_EQ(type.constructor[1].text, "b");
    EXPECT_EQ(type.base->text, "G");
    ASSERT_EQ(type.extras.size(), 2U);
    EXPECT_EQ(type.extras[0].text, "creator");
    ASSERT_EQ(type.attributes.size(), 3U);
    EXPECT_EQ(type.attributes[0].doc, std::vector<std::string>{"About a."});
    EXPECT_EQ(type.attributes[0].type.text, "C::D");
    EXPECT_EQ(type.attributes[1].initial->text, "7");
    EXPECT_EQ(type.attributes[2].shape, tree::Shape::method);
    ASSERT_EQ(type.attributes[2].arguments.size(), 2U);
    EXPECT_FALSE(type.attributes[2].arguments[0].shared);
    EXPECT_TRUE(type.attributes[2].arguments[1].shared);
    EXPECT_FALSE(file.types[1].entity);
    ASSERT_EQ(file.registration.size(), 2U);
    EXPECT_EQ(file.registration[1].text, "V");
    EXPECT_EQ(file.registrationAt, (Location{14, 1}));
}

TEST(Parser, DistinguishesTheShapesOfAttributes) {
    EXPECT_EQ(attributeOf("x : T").shape, tree::Shape::plain);
    EXPECT_EQ(attributeOf("x : T[k]").key->text, "k");
    EXPECT_EQ(attributeOf("x : constant T = \"t\"").shape, tree::Shape::constant);
    EXPECT_EQ(attributeOf("x : owned T").shape, tree::Shape::owned);
    EXPECT_EQ(attributeOf("x : shared N::T[N::K]").shape, tree::Shape::shared);
    EXPECT_EQ(attributeOf("x : shared N::T[N::K]").key->text, "N::K");
    EXPECT_EQ(attributeOf("x : set[T]").shape, tree::Shape::set);
    EXPECT_EQ(attributeOf("x : hashed set[T]").shape, tree::Shape::hashedSet);
    EXPECT_TRUE(attributeOf("x : settable T").settable);
    EXPECT_FALSE(attributeOf("x : T").settable);
}

TEST(Parser, ReservesNoWords) {
    EXPECT_EQ(attributeOf("method : U8").name.text, "method");
    EXPECT_EQ(attributeOf("entity : U8").name.text, "entity");
    EXPECT_EQ(attributeOf("set : set[U8]").name.text, "set");
}

TEST(Parser, AMissingRegistrationIsLocatedAtTheEnd) {
    EXPECT_EQ(parse("namespace N\n").registrationAt, (Location{2, 1}));
}

TEST(Parser, ReportsWhatWasExpectedAndWhatWasFound) {
    struct {
        char const * source;
        char const * error;
    } const cases[] = {
        {"", "1:1: expected 'namespace NAME' at the start of the model, found the end of the file"},
        {"entity E() {}",
         "1:1: expected 'namespace NAME' at the start of the model, found 'entity'"},
        {"namespace", "1:10: expected a name, found the end of the file"},
        {"namespace A::", "1:14: expected a name after '::', found the end of the file"},
        {"namespace N\nentty E() {}",
         "2:1: expected 'import', 'entity', 'value' or 'registration', found 'entty'"},
        {"namespace N\n/// Doc.\nimport value T from \"t\"",
         "3:1: expected 'entity' or 'value' after the '///' lines, found 'import'"},
        {"namespace N\nimport", "2:7: expected 'entity', 'value', 'scalar' or 'text' after "
                                "'import', found the end of the file"},
        {"namespace N\nimport value T",
         "2:15: expected 'from \"HEADER\"' after the imported type, found the end of the file"},
        {"namespace N\nimport value T from t",
         "2:21: expected the header of 'T' in quotes, found 't'"},
        {"namespace N\nimport value T[k] from \"t\"",
         "2:17: expected ':' and the type of the key, found ']'"},
        {"namespace N\nentity () {}", "2:8: expected the name of the type, found '('"},
        {"namespace N\nentity E {}",
         "2:10: expected '(' and the constructor arguments of 'E', found '{'"},
        {"namespace N\nentity E(a b) {}", "2:12: expected ',' or ')', found 'b'"},
        {"namespace N\nentity E(a,) {}", "2:12: expected the name of an attribute, found ')'"},
        {"namespace N\nentity E() : {}", "2:14: expected the base of 'E', found '{'"},
        {"namespace N\nentity E() with {}", "2:17: expected 'factory' or 'creator', found '{'"},
        {"namespace N\nentity E() x : T",
         "2:12: expected '{' and the attributes of 'E', found 'x'"},
        {"namespace N\nentity E() { x T }", "2:16: expected ':' and the type of 'x', found 'T'"},
        {"namespace N\nentity E() { x : }", "2:18: expected the type of 'x', found '}'"},
        {"namespace N\nentity E() { x : T[] }", "2:20: expected the key of 'x', found ']'"},
        {"namespace N\nentity E() { x : T[k }", "2:22: expected ']' after the key, found '}'"},
        {"namespace N\nentity E() { x : set T }",
         "2:22: expected '[' and the type of the members, found 'T'"},
        {"namespace N\nentity E() { x : hashed T[k] }",
         "2:25: expected 'set' after 'hashed' (only sets are hashed), found 'T'"},
        {"namespace N\nentity E() { x : ownd T[k] }",
         "2:18: unknown modifier 'ownd'; did you mean 'owned'?"},
        {"namespace N\nentity E() { x : U8 = U8 }",
         "2:23: expected a number, a string, 'true' or 'false' after '=', found 'U8'"},
        {"namespace N\nentity E() { method m(x) }",
         "2:24: expected ':' and the type of 'x', found ')'"},
        {"namespace N\nentity E() { x : T",
         "2:19: expected an attribute, a method or '}', found the end of the file"},
        {"namespace N\nentity E() { x : T\n/// Doc.\n}",
         "4:1: expected an attribute or a method after the '///' lines, found '}'"},
        {"namespace N\nregistration { E",
         "2:17: expected the name of a type or '}', found the end of the file"},
        {"namespace N\nregistration { }\nentity E() {}",
         "3:1: expected the end of the file after the registration, found 'entity'"},
    };

    for (auto const & wrong : cases) {
        EXPECT_EQ(errorOf(wrong.source), wrong.error) << wrong.source;
    }
}

} // namespace modelc
