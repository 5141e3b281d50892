#include "Vex/Type.h"
#include "models/Fleet.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Test::Fleet {

namespace {

/// "NUMBER NAME KIND TYPE[KEY]" for each attribute.
std::string described(Vex::Type const & type) {
    std::ostringstream text;
    for (auto const & attribute : type.attributes) {
        text << attribute.number << " " << attribute.name << ", " << kindText(attribute.kind)
             << ": " << attribute.type;
        if (!attribute.key.empty()) {
            text << "[" << attribute.key << "]";
        }
        text << "\n";
    }
    return text.str();
}

} // namespace

TEST(GeneratedReflection, NumbersTheAttributesOfAnEntityFrom130) {
    EXPECT_EQ(described(Harbour::_vexType),
              "130 master, plain: Vex::String\n"
              "131 pilot, settable entity pointer: Test::Fleet::Captain\n"
              "132 berth, value collection: Test::Fleet::Berth[U16]\n"
              "133 voyage, value collection: Test::Fleet::Voyage[Vex::Name]\n"
              "134 buoy, value collection: Sea::Buoy[Vex::Name]\n"
              "135 flag, set: bool[Vex::String]\n"
              "136 wreck, hashed set: bool[Vex::Name]\n"
              "137 hold, owned entity collection: Test::Fleet::Hold[Vex::Name]\n"
              "138 crate, owned entity collection: Test::Fleet::Crate[Vex::String]\n"
              "139 chart, shared entity collection: Sea::Chart[Vex::Name]\n"
              "140 captain, shared entity collection: Test::Fleet::Captain[Vex::Name]\n"
              "141 log, owned entity: Test::Fleet::Log\n"
              "142 watch, owned entity: Test::Fleet::Empty\n");
}

TEST(GeneratedReflection, NumbersMethodsAfterTheOtherAttributes) {
    EXPECT_EQ(described(Vessel::_vexType),
              "130 name, constructor argument: Vex::Name\n"
              "131 chart, entity pointer: Sea::Chart\n"
              "132 shelf, constant: Vex::String\n"
              "133 hold, owned entity collection: Test::Fleet::Hold[Vex::Name]\n"
              "134 log, owned entity: Test::Fleet::Log\n"
              "136 sail, method: (knots : U32, to : Vex::Name, by : shared Sea::Chart)\n"
              "135 draft, plain: Sea::Depth\n");
}

TEST(GeneratedReflection, NumbersTheAttributesOfADerivedEntityFrom258) {
    EXPECT_EQ(described(Ferry::_vexType), "258 route, constructor argument: Vex::String\n"
                                          "259 cars, constructor argument: U32\n"
                                          "260 voyage, plain: Test::Fleet::Voyage\n");
    EXPECT_EQ(Ferry::_vexType.base, &Vessel::_vexType);
    EXPECT_EQ(Ferry::_vexType.attribute("draft")->number, 135U);
    EXPECT_EQ(Ferry::_vexType.attribute(258)->name, "route");
}

TEST(GeneratedReflection, NumbersTheAttributesOfAValueFrom2) {
    EXPECT_EQ(described(Berth::_vexType), "2 number, constructor argument: U16\n"
                                          "3 ship, constructor argument: Vex::String\n"
                                          "4 fee, plain: U32\n"
                                          "5 lit, plain: bool\n"
                                          "6 surveyor, plain: Vex::String\n");
    EXPECT_EQ(Berth::_vexType.kind, Vex::Type::Kind::value);
    EXPECT_EQ(Berth::_vexType.base, nullptr);
}

TEST(GeneratedReflection, HoldsNamesArgumentsAndTheModelsComments) {
    EXPECT_EQ(Voyage::_vexType.name, "Test::Fleet::Voyage");
    EXPECT_EQ(Voyage::_vexType.doc, "A voyage\nin two lines.");
    EXPECT_EQ(Berth::_vexType.attribute("ship")->doc, "Empty means free.");
    EXPECT_EQ(Log::_vexType.doc, "");
    std::string arguments;
    for (auto const argument : Ferry::_vexType.constructorArguments) {
        arguments += std::string(argument) + " ";
    }
    EXPECT_EQ(arguments, "name chart route cars ");
    EXPECT_TRUE(Harbour::_vexType.constructorArguments.empty());
    EXPECT_TRUE(Empty::_vexType.attributes.empty());
}

TEST(GeneratedReflection, IsReachedThroughTheObject) {
    Vex::Ptr<Vessel const> const vessel = ferryFactory("Silja", nullptr, "", 0);
    EXPECT_EQ(&vessel->fwkType(), &Ferry::_vexType);
    EXPECT_EQ(vessel->fwkType().kind, Vex::Type::Kind::entity);
}

TEST(GeneratedRegistration, RegistersTheTypesInTheOrderOfTheModel) {
    std::string names;
    for (auto const * type : Vex::typeTable()) {
        if (type->name.starts_with("Test::Fleet::")) {
            names += std::string(type->name.substr(13)) + " ";
        }
    }
    EXPECT_EQ(names, "Harbour Berth Ferry Vessel Empty Voyage Crate Hold Log Captain ");
    EXPECT_EQ(Vex::typeNode("Test::Fleet::Crate"), &Crate::_vexType);
}

} // namespace Test::Fleet
