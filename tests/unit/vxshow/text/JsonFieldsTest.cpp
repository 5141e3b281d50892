#include "vxshow/text/JsonFields.h"

#include "tests/unit/vxshow/system/TextFile.h"
#include "vxshow/text/JsonRefusal.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace vxshow::test {

using namespace text;

namespace {

struct Point {
    Vex::U32 x = 0;
    Vex::U32 y = 0;
    Vex::U32 altitude = 0;
};

constexpr auto xMember =
    requiredMember("x", [](JsonValue & value, Point & into) { into.x = value.number(99); });
constexpr auto yMember =
    requiredMember("y", [](JsonValue & value, Point & into) { into.y = value.number(99); });
constexpr auto altitudeMember = optionalMember(
    "altitude", [](JsonValue & value, Point & into) { into.altitude = value.number(99); });

constexpr auto strictPoint = strictObject("a point", xMember, yMember, altitudeMember);
constexpr auto lenientPoint = lenientObject("a point", xMember, yMember, altitudeMember);

/// The numbers that `object` reads from the document `text`, or the line that refuses it.
template <class Object>
std::string readBy(Object const & object, std::string_view text) {
    TextFile const file(text);
    auto const bytes = system::FileBytes::read(file.descriptor());
    try {
        JsonReader json(bytes);
        Point point;
        object.read(json, point);
        return std::to_string(point.x) + " " + std::to_string(point.y) + " " +
               std::to_string(point.altitude);
    } catch (Refusal const & refusal) {
        return refusalLine(refusal, bytes.text());
    } catch (MalformedJson const & malformed) {
        return refusalLine(malformed, bytes.text());
    }
}

TEST(JsonFields, ReadsKnownMembersInAnyOrder) {
    for (auto const text : {R"({"x":1,"y":2,"altitude":3})", R"({"altitude":3,"y":2,"x":1})",
                            R"({"\u0078":1,"y":2,"\u0061ltitude":3})"}) {
        EXPECT_EQ(readBy(strictPoint, text), "1 2 3") << text;
        EXPECT_EQ(readBy(lenientPoint, text), "1 2 3") << text;
    }
    EXPECT_EQ(readBy(strictPoint, R"({"x":1,"y":2})"), "1 2 0");
}

TEST(JsonFields, NamesTheFirstMissingRequiredMember) {
    for (auto const text : {"{}", R"({"y":2})", R"({"altitude":3})"}) {
        EXPECT_EQ(readBy(strictPoint, text), R"(1:1: found an object, expected "x" in it)") << text;
        EXPECT_EQ(readBy(lenientPoint, text), R"(1:1: found an object, expected "x" in it)")
            << text;
    }
    EXPECT_EQ(readBy(strictPoint, R"({"x":1})"), R"(1:1: found an object, expected "y" in it)");
}

TEST(JsonFields, RefusesARepeatedKnownMember) {
    EXPECT_EQ(readBy(strictPoint, R"({"x":1,"x":1})"), R"(1:8: found "x" again, expected it once)");
    EXPECT_EQ(readBy(lenientPoint, R"({"x":1,"\u0078":1})"),
              R"(1:8: found "\u0078" again, expected it once)");
}

TEST(JsonFields, AStrictObjectRefusesAnUnknownMember) {
    for (auto const name : {"z", "xx", "", "altitudes", "altitud", "\\u007a"}) {
        std::string const quoted = "\"" + std::string(name) + "\"";
        EXPECT_EQ(readBy(strictPoint, "{" + quoted + ":1}"),
                  "1:2: found " + quoted + R"(, expected "x", "y" or "altitude")");
    }
}

TEST(JsonFields, ALenientObjectSkipsUnknownMembersEvenIfRepeated) {
    EXPECT_EQ(readBy(lenientPoint, R"({"z":[1,{"x":5}],"x":1,"z":null,"\u007a":"","y":2})"),
              "1 2 0");
}

TEST(JsonFields, RefusesAValueOfTheWrongTypeAtItsPlace) {
    EXPECT_EQ(readBy(lenientPoint, R"({"x":"1","y":2})"),
              R"(1:6: x: found "1", expected a whole number from 0 to 99)");
}

TEST(JsonFields, ReadsMembersOfANestedObject) {
    TextFile const file(R"({"a":{"x":1,"y":2},"b":[]})");
    auto const bytes = system::FileBytes::read(file.descriptor());
    JsonReader json(bytes);
    Point point;
    try {
        json.document([&](JsonText const &, JsonValue & value) { strictPoint.read(value, point); });
        FAIL();
    } catch (Refusal const & refusal) {
        EXPECT_EQ(refusalLine(refusal, bytes.text()), "1:24: b: found an array, expected a point");
    }
    EXPECT_EQ(point.y, 2);
}

TEST(JsonFields, AreVisitedInTableOrder) {
    std::string names;
    strictPoint.eachField([&](auto const & field) { names.append(field.name.text()).append(" "); });
    EXPECT_EQ(names, "x y altitude ");
}

} // namespace

} // namespace vxshow::test
