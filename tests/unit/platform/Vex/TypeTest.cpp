#include "Vex/Type.h"

#include "Vex/Entity.h"
#include "Vex/Ptr.h"
#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Vex::Attribute;
using Vex::AttributeKind;
using Vex::Type;

constexpr Attribute baseAttributes[] = {
    {"name", 130, AttributeKind::constructorArgument, "Vex::String", "", ""},
    {"peers", 131, AttributeKind::setCollection, "bool", "Nolt::IpAddr", ""},
};
constexpr Attribute derivedAttributes[] = {
    {"limit", 258, AttributeKind::plain, "U32", "", "How many at most."},
};
constexpr Type baseType{"Test::Base", Type::Kind::entity, nullptr, baseAttributes, {}, ""};
constexpr Type derivedType{
    "Test::Derived", Type::Kind::entity, &baseType, derivedAttributes, {}, ""};

} // namespace

TEST(Type, FindsOwnAndInheritedAttributesByNameAndNumber) {
    ASSERT_NE(derivedType.attribute("limit"), nullptr);
    EXPECT_EQ(derivedType.attribute("limit")->number, 258U);
    EXPECT_EQ(derivedType.attribute("peers"), &baseAttributes[1]);
    EXPECT_EQ(derivedType.attribute(130U), &baseAttributes[0]);
    EXPECT_EQ(baseType.attribute(258U), nullptr);
    EXPECT_EQ(derivedType.attribute("none"), nullptr);
}

TEST(Type, TableKeepsTheOrderOfRegistrationAndTakesANameOnce) {
    Vex::typeNodeIs(derivedType);
    Vex::typeNodeIs(baseType);
    Vex::typeNodeIs(derivedType);
    auto const & types = Vex::typeTable();
    EXPECT_EQ(std::count(types.begin(), types.end(), &derivedType), 1);
    auto const derivedAt = std::find(types.begin(), types.end(), &derivedType);
    EXPECT_EQ(*(derivedAt + 1), &baseType);
    EXPECT_EQ(Vex::typeNode("Test::Base"), &baseType);
    EXPECT_EQ(Vex::typeNode("Test::Nothing"), nullptr);
}

TEST(Type, EveryEntityHasARecord) {
    Vex::Type const & type = Vex::makePtr<Counted>(1)->fwkType();
    EXPECT_EQ(type.name, "Test::Counted");
    EXPECT_EQ(type.base->name, "Vex::Entity");
    EXPECT_EQ(type.base->base->name, "Vex::PtrInterface");
    EXPECT_EQ(Vex::typeNode("Test::Counted"), nullptr);
}

TEST(Type, EveryKindHasItsOwnName) {
    std::vector<std::string_view> words;
    for (int kind = 0; kind <= static_cast<int>(AttributeKind::method); ++kind) {
        words.push_back(Vex::kindText(static_cast<AttributeKind>(kind)));
    }
    std::sort(words.begin(), words.end());
    EXPECT_EQ(std::unique(words.begin(), words.end()), words.end());
}
