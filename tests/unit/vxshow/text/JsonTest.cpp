#include "vxshow/text/Json.h"

#include "tests/unit/vxshow/system/TextFile.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace vxshow::test {

using namespace text;

namespace {

system::FileBytes bytesOf(std::string_view text) {
    TextFile const file(text);
    return system::FileBytes::read(file.descriptor());
}

/// The names and texts of an object of objects, in the order in which they are visited.
std::vector<std::string> walked(std::string_view text) {
    auto const bytes = bytesOf(text);
    JsonReader reader(bytes);
    std::vector<std::string> seen;
    reader.document([&](JsonText const & name, JsonValue & value) {
        seen.emplace_back(name.text());
        value.members("an object", [&](JsonText const & inner, JsonValue & member) {
            seen.emplace_back(inner.text());
            member.texts("a list", "a text",
                         [&](JsonText const & element) { seen.emplace_back(element.text()); });
        });
    });
    return seen;
}

TEST(Json, VisitsMembersAndTextsInDocumentOrder) {
    EXPECT_EQ(walked(R"({"b":{"x":["1","\u0032\n"],"y":[]},"a":{},"b":{"z":["3"]}})"),
              (std::vector<std::string>{"b", "x", "1", "2\n", "y", "a", "b", "z", "3"}));
    EXPECT_EQ(walked("{}"), std::vector<std::string>());
}

TEST(Json, VisitsTheElementsOfATopLevelArray) {
    auto const numbers = [](std::string_view text) {
        auto const bytes = bytesOf(text);
        JsonReader reader(bytes);
        std::vector<std::int64_t> seen;
        reader.documentElements("an array", [&](JsonValue & value) {
            seen.push_back(value.integer("a whole number"));
        });
        return seen;
    };
    EXPECT_EQ(numbers("[]"), std::vector<std::int64_t>());
    EXPECT_EQ(numbers("[0,-9223372036854775808,9223372036854775807]"),
              (std::vector<std::int64_t>{0, std::numeric_limits<std::int64_t>::min(),
                                         std::numeric_limits<std::int64_t>::max()}));
    for (auto const * text : {"{}", "7", "\"x\"", "[1.5]", "[9223372036854775808]", "[null]"}) {
        EXPECT_THROW(numbers(text), Refusal) << text;
    }
    for (auto const * text : {"[", "[1", "[1,]", "[1] 2", "[1]]"}) {
        EXPECT_ANY_THROW(numbers(text)) << text;
    }
}

TEST(Json, UnescapesTextsOfAnyLength) {
    for (std::size_t length = 0; length < 200; ++length) {
        std::string const plain(length, 'x');
        auto document = "{\"" + plain;
        document.append("\\\\").append(plain).append("\":{}}");
        auto expected = plain + "\\";
        expected.append(plain);
        EXPECT_EQ(walked(document), std::vector<std::string>{expected});
    }
}

TEST(Json, RefusesAValueOfTheWrongTypeAtItsStart) {
    auto const bytes = bytesOf(R"({"a":{"b":7}})");
    JsonReader reader(bytes);
    try {
        reader.document([&](JsonText const &, JsonValue & value) {
            value.members("an object", [&](JsonText const &, JsonValue & member) {
                member.texts("a list", "a text", [](JsonText const &) {});
            });
        });
        FAIL();
    } catch (Refusal const & refusal) {
        EXPECT_EQ(refusal.at - bytes.text().data(), 10);
        EXPECT_EQ(refusal.expected, "a list");
    }
}

TEST(Json, VisitsElementsThatAreObjects) {
    auto const bytes = bytesOf(R"({"a":[{"b":true},{},{"b":false,"c":true}],"d":[]})");
    JsonReader reader(bytes);
    std::vector<std::string> seen;
    reader.document([&](JsonText const & name, JsonValue & value) {
        seen.emplace_back(name.text());
        value.elements("a list", [&](JsonValue & element) {
            seen.emplace_back("element");
            element.members("an object", [&](JsonText const & inner, JsonValue & flag) {
                seen.emplace_back(inner.text());
                seen.emplace_back(flag.boolean() ? "true" : "false");
            });
        });
    });
    EXPECT_EQ(seen, (std::vector<std::string>{"a", "element", "b", "true", "element", "element",
                                              "b", "false", "c", "true", "d"}));
}

TEST(Json, RefusesARepeatedElementAtItsStart) {
    auto const bytes = bytesOf(R"({"a":[{"b":true},{"b":true}]})");
    JsonReader reader(bytes);
    try {
        reader.document([](JsonText const &, JsonValue & value) {
            int elements = 0;
            value.elements("a list", [&](JsonValue & element) {
                element.members("an object",
                                [](JsonText const &, JsonValue & flag) { flag.boolean(); });
                if (++elements == 2) {
                    element.refuseAgain();
                }
            });
        });
        FAIL();
    } catch (Refusal const & refusal) {
        EXPECT_EQ(refusal.at - bytes.text().data(), 17);
        EXPECT_EQ(refusal.about, " again");
    }
}

TEST(Json, RefusesAnythingButABoolean) {
    for (std::string const value :
         {"truE", "true1", "falsehood", "tru", "1", "0", "null", "\"true\"", "[]", "{}"}) {
        auto const bytes = bytesOf("{\"a\":" + value + "}");
        JsonReader reader(bytes);
        try {
            reader.document([](JsonText const &, JsonValue & flag) { flag.boolean(); });
            ADD_FAILURE() << value;
        } catch (Refusal const & refusal) {
            EXPECT_EQ(refusal.at - bytes.text().data(), 5);
            EXPECT_EQ(refusal.expected, "true or false");
        }
    }
}

TEST(Json, RefusesAnythingButOneJsonObject) {
    for (auto const * text : {"", "[]", "{", "{}}", "{} x", R"({"a":{})", R"({"a":{}}})",
                              R"({"a":{}}{})", R"({"a":{"b":[}}})", R"({"a":{"b":["\q"]}})",
                              "{\"\xff\":{}}", "\xef\xbb\xbf{}", R"({"a":{},})", R"({"a" {}})"}) {
        bool refused = false;
        try {
            walked(text);
        } catch (MalformedJson const &) {
            refused = true;
        } catch (Refusal const &) {
            refused = true;
        }
        EXPECT_TRUE(refused) << text;
    }
}

} // namespace

} // namespace vxshow::test
