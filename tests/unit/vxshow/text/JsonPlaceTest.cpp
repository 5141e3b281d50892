#include "vxshow/text/JsonPlace.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace text;

namespace {

std::string placeText(std::string_view document, std::string_view token) {
    auto const place = placeOf(document, document.find(token));
    return std::to_string(place.line) + ":" + std::to_string(place.column) + " " + place.members;
}

std::string syntaxText(std::string_view document) {
    auto const error = firstSyntaxError(document);
    return error ? std::to_string(error->position) + " " + error->found + " / " + error->expected
                 : "none";
}

TEST(JsonPlace, GivesLineColumnAndPath) {
    std::string_view const document = "{\n"
                                      "  \"a\": { \"x y\": [ 1, { \"b\": 22 }, [ 333 ] ],\n"
                                      "\t\"c\" : 4444\n"
                                      "  }\n"
                                      "}";
    EXPECT_EQ(placeText(document, "{"), "1:1 ");
    EXPECT_EQ(placeText(document, "\"a\""), "2:3 ");
    EXPECT_EQ(placeText(document, "{ \"x"), "2:8 a");
    EXPECT_EQ(placeText(document, "\"x y\""), "2:10 a");
    EXPECT_EQ(placeText(document, "["), "2:17 a.\"x y\"");
    EXPECT_EQ(placeText(document, "1"), "2:19 a.\"x y\"[0]");
    EXPECT_EQ(placeText(document, "22"), "2:29 a.\"x y\"[1].b");
    EXPECT_EQ(placeText(document, "333"), "2:37 a.\"x y\"[2][0]");
    EXPECT_EQ(placeText(document, "\"c\""), "3:2 a");
    EXPECT_EQ(placeText(document, "4444"), "3:8 a.c");
}

TEST(JsonPlace, InsideATokenGivesThePathOfTheToken) {
    std::string_view const document = R"({"a":{"bcd":"efg"}})";
    EXPECT_EQ(placeText(document, "cd"), "1:9 a");
    EXPECT_EQ(placeText(document, "fg"), "1:15 a.bcd");
}

TEST(JsonPlace, AtTheEndGivesThePathOfTheOpenValue) {
    std::string_view const document = R"({"a":{"b":[1,)";
    auto const place = placeOf(document, document.size());
    EXPECT_EQ(place.column, 14);
    EXPECT_EQ(place.members, "a.b[1]");
}

TEST(JsonPlace, FindsNoErrorInValidJson) {
    EXPECT_EQ(syntaxText(" { } \n"), "none");
    EXPECT_EQ(syntaxText(R"({"a":[],"b":{},"c":[1,"x",true,[{}]],"":null})"), "none");
}

TEST(JsonPlace, HandlesATopLevelArray) {
    std::string_view const document = R"([1,{"a":[2]}])";
    EXPECT_EQ(placeOf(document, document.find('2'), JsonRoot::array).members, "[1].a[0]");
    EXPECT_FALSE(firstSyntaxError(document, JsonRoot::array));
    EXPECT_EQ(firstSyntaxError("{}", JsonRoot::array)->expected, "an array");
    EXPECT_EQ(firstSyntaxError("[]]", JsonRoot::array)->position, 2);
}

TEST(JsonPlace, FindsTheFirstWrongToken) {
    EXPECT_EQ(syntaxText(""), "0 the end of the file / an object");
    EXPECT_EQ(syntaxText("[]"), "0 an array / an object");
    EXPECT_EQ(syntaxText("{]"), "1 ']' / the name of a member or '}'");
    EXPECT_EQ(syntaxText("{1:2}"), "1 1 / the name of a member or '}'");
    EXPECT_EQ(syntaxText(R"({"a"})"), "4 '}' / ':'");
    EXPECT_EQ(syntaxText(R"({"a":})"), "5 '}' / a value");
    EXPECT_EQ(syntaxText(R"({"a":,)"), "5 ',' / a value");
    EXPECT_EQ(syntaxText(R"({"a"::)"), "5 ':' / a value");
    EXPECT_EQ(syntaxText(R"({"a":nul})"), "5 nul / a value");
    EXPECT_EQ(syntaxText(R"({"a":1]})"), "6 ']' / ',' or '}'");
    EXPECT_EQ(syntaxText(R"({"a":1 "b")"), "7 \"b\" / ',' or '}'");
    EXPECT_EQ(syntaxText(R"({"a":1,})"), "7 '}' / the name of a member");
    EXPECT_EQ(syntaxText(R"({"a":[})"), "6 '}' / a value or ']'");
    EXPECT_EQ(syntaxText(R"({"a":[1}]})"), "7 '}' / ',' or ']'");
    EXPECT_EQ(syntaxText(R"({"a":[1,]})"), "8 ']' / a value");
    EXPECT_EQ(syntaxText("{}{}"), "2 an object / the end of the file");
    EXPECT_EQ(syntaxText(R"({"a":"x)"), "7 the end of the file / the quote at the end of a text");
}

TEST(JsonPlace, RefusesMoreThan64Levels) {
    std::string document = R"({"a":)" + std::string(63, '[') + std::string(63, ']') + "}";
    EXPECT_EQ(syntaxText(document), "none");
    document.insert(5, "[");
    EXPECT_EQ(syntaxText(document), "68 an array / at most 64 levels");
}

} // namespace

TEST(JsonPlace, ACallerIsAskedAtEachTokenAndCanEndTheSearch) {
    std::string_view const document = R"({"a":[1,2,3],"b":})";
    unsigned tokens = 0;
    auto const threeAreEnough = [&] {
        if (++tokens == 3) {
            throw tokens;
        }
    };
    EXPECT_THROW(firstSyntaxError(document, JsonRoot::object, threeAreEnough), unsigned);
    EXPECT_EQ(tokens, 3U);
    tokens = 0;
    EXPECT_THROW(placeOf(document, document.size() - 1, JsonRoot::object, threeAreEnough),
                 unsigned);
    EXPECT_EQ(tokens, 3U);
}

} // namespace vxshow::test
