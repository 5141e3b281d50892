#include "Vex/Reinstantiation.h"
#include "Vex/TypeOperations.h"
#include "tests/unit/modelc/generated/Fleet.h"

#include <gtest/gtest.h>

/// Operates the model as a generic tool does: through the type table, by the names of types
/// and attributes.
namespace Test::Fleet {

namespace {

using Vex::AnyValue;
using Vex::AnyValues;
using Vex::Name;
using Vex::String;

/// An object of a type that is known only by name.
class Thing {
public:
    Thing(std::string const & type, AnyValues const & arguments)
        : Thing(*Vex::typeNode("Test::Fleet::" + type),
                Vex::typeNode("Test::Fleet::" + type)->operations->construct(arguments)) {}

    explicit Thing(AnyValue const & object) : Thing(*object.reflection(), object) {}

    AnyValue get(char const * name) const { return operations().get(box, number(name)); }

    void set(char const * name, AnyValue const & value) {
        operations().set(box, number(name), value);
    }

    AnyValue insert(char const * name, AnyValues const & arguments) {
        return operations().insert(box, number(name), arguments);
    }

    AnyValue remove(char const * name, AnyValues const & key) {
        return operations().remove(box, number(name), key);
    }

    void clear(char const * name) { operations().clear(box, number(name)); }

    AnyValue lookup(char const * name, AnyValue const & key) const {
        return operations().lookup(box, number(name), key);
    }

    std::size_t count(char const * name) const { return operations().count(box, number(name)); }

    /// The texts of the keys in iteration order.
    std::string keys(char const * name) const {
        std::string texts;
        for (auto at = operations().iterate(box, number(name)); at; ++at) {
            texts += at.key().text().value() + " ";
            EXPECT_EQ(lookup(name, at.key()), at.element());
        }
        return texts;
    }

    AnyValue box;

private:
    Thing(Vex::Type const & type, AnyValue object) : box(std::move(object)), type_(&type) {}

    Vex::TypeOperations const & operations() const { return *type_->operations; }

    Vex::U32 number(char const * name) const { return type_->attribute(name)->number; }

    Vex::Type const * type_;
};

AnyValue boxedChart(Vex::U32 sheet) {
    return Vex::makePtr<Sea::Chart>(sheet);
}

template <class Error>
std::string errorOf(auto action) {
    try {
        action();
    } catch (Error const & error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(GeneratedOperations, ConstructFromTheArgumentsOfTheRecord) {
    Thing const berth("Berth", {U16{3}, String("Silja"), U32{70}});
    EXPECT_EQ(berth.box, AnyValue(Berth(3, "Silja", 70)));
    auto const sheet = boxedChart(7);
    Thing const ferry("Ferry", {Name("Anna"), sheet, String("north"), U32{40}});
    EXPECT_EQ(ferry.get("name"), AnyValue(Name("Anna")));
    EXPECT_EQ(ferry.get("chart"), sheet);
    EXPECT_EQ(ferry.get("cars"), AnyValue(U32{40}));
    EXPECT_TRUE(ferry.box.as<Vex::Ptr<Ferry>>()->hasNotificationActive());
}

TEST(GeneratedOperations, ConstructElementsThatHaveNoFactory) {
    Thing const crate("Crate", {String("a"), U8{1}, Sea::Depth(2), Name("Bert")});
    EXPECT_EQ(crate.get("depth"), AnyValue(Sea::Depth(2)));
    EXPECT_TRUE(crate.box.as<Vex::Ptr<Crate>>()->hasNotificationActive());
    EXPECT_EQ(Thing("Empty", {}).box.typeName(), "Vex::Ptr<Test::Fleet::Empty>");
}

TEST(GeneratedOperations, SetAndGetPlainAttributes) {
    Thing harbour("Harbour", {});
    EXPECT_EQ(harbour.get("master"), AnyValue(String()));
    harbour.set("master", String("Carl"));
    EXPECT_EQ(harbour.get("master"), AnyValue(String("Carl")));
    EXPECT_TRUE(harbour.get("pilot").isNull());
    Thing const captain("Captain", {Name("Anna"), nullptr});
    harbour.set("pilot", captain.box);
    EXPECT_EQ(harbour.get("pilot"), captain.box);
    harbour.set("pilot", nullptr);
    EXPECT_TRUE(harbour.get("pilot").isNull());
    Thing berth("Berth", {U16{3}, String(), U32{0}});
    EXPECT_EQ(berth.get("lit"), AnyValue(true));
    berth.set("lit", false);
    berth.set("fee", U32{9});
    EXPECT_EQ(berth.get("lit"), AnyValue(false));
    EXPECT_EQ(berth.get("fee"), AnyValue(U32{9}));
}

TEST(GeneratedOperations, ReachTheAttributesOfTheBase) {
    Thing ferry("Ferry", {Name("Anna"), nullptr, String("north"), U32{40}});
    EXPECT_EQ(ferry.get("shelf"), AnyValue(String("charts/\"old\"/")));
    ferry.set("draft", Sea::Depth(4));
    EXPECT_EQ(ferry.get("draft"), AnyValue(Sea::Depth(4)));
    ferry.insert("hold", {Name("aft")});
    EXPECT_EQ(ferry.keys("hold"), "aft ");
    // The base's own operations accept the derived object.
    auto const & vessel = *Vex::typeNode("Test::Fleet::Vessel")->operations;
    EXPECT_EQ(vessel.count(ferry.box, 133), 1U);
    EXPECT_THROW(vessel.get(ferry.box, 258), Vex::OperandError);
}

TEST(GeneratedOperations, FindOrCreateAnOwnedEntityAndRemoveIt) {
    Thing harbour("Harbour", {});
    EXPECT_TRUE(harbour.get("log").isNull());
    Thing log(harbour.insert("log", {}));
    log.insert("line", {U32{5}, true});
    EXPECT_EQ(harbour.insert("log", {}), log.box);
    EXPECT_EQ(harbour.get("log"), log.box);
    EXPECT_EQ(log.keys("line"), "5 ");
    EXPECT_TRUE(harbour.remove("log", {}).empty());
    EXPECT_TRUE(harbour.get("log").isNull());
}

TEST(GeneratedOperations, OverwriteValuesUnderTheirKey) {
    Thing harbour("Harbour", {});
    harbour.insert("berth", {Berth(10, "Silja", 1)});
    harbour.insert("berth", {Berth(9, "", 2)});
    EXPECT_TRUE(harbour.insert("berth", {Berth(10, "Viking", 3)}).empty());
    EXPECT_EQ(harbour.keys("berth"), "9 10 ");
    EXPECT_EQ(harbour.lookup("berth", U16{10}), AnyValue(Berth(10, "Viking", 3)));
    EXPECT_TRUE(harbour.lookup("berth", U16{11}).empty());
    EXPECT_TRUE(harbour.remove("berth", {U16{11}}).empty());
    EXPECT_EQ(harbour.count("berth"), 2U);
    EXPECT_EQ(harbour.remove("berth", {U16{9}}), AnyValue(Berth(9, "", 2)));
    harbour.clear("berth");
    EXPECT_EQ(harbour.count("berth"), 0U);
}

TEST(GeneratedOperations, AcceptImportedValues) {
    Thing harbour("Harbour", {});
    harbour.insert("buoy", {Sea::Buoy("north", 3)});
    EXPECT_EQ(harbour.lookup("buoy", Name("north")), AnyValue(Sea::Buoy("north", 3)));
    EXPECT_EQ(harbour.remove("buoy", {Name("north")}), AnyValue(Sea::Buoy("north", 3)));
}

TEST(GeneratedOperations, ChangeSetsOfBothKinds) {
    Thing harbour("Harbour", {});
    for (char const * flag : {"red", "blue", "green"}) {
        harbour.insert("flag", {String(flag), true});
        harbour.insert("wreck", {Name(flag), true});
    }
    harbour.insert("flag", {String("red"), false});
    EXPECT_EQ(harbour.keys("flag"), "blue green red ");
    EXPECT_EQ(harbour.lookup("flag", String("red")), AnyValue(false));
    EXPECT_EQ(harbour.remove("flag", {String("blue")}), AnyValue(true));
    EXPECT_TRUE(harbour.remove("flag", {String("blue")}).empty());
    EXPECT_EQ(harbour.count("wreck"), 3U);
    EXPECT_EQ(harbour.keys("wreck").size(), std::string("red blue green ").size());
    EXPECT_EQ(harbour.remove("wreck", {Name("red")}), AnyValue(true));
    EXPECT_EQ(harbour.count("wreck"), 2U);
    harbour.clear("wreck");
    EXPECT_EQ(harbour.keys("wreck"), "");
}

TEST(GeneratedOperations, FindOrCreateElementsAndRejectOtherArguments) {
    Thing harbour("Harbour", {});
    AnyValues const arguments{String("a"), U8{1}, Sea::Depth(2), Name("Bert")};
    Thing crate(harbour.insert("crate", arguments));
    crate.set("sealed", true);
    EXPECT_EQ(harbour.insert("crate", arguments), crate.box);
    EXPECT_EQ(crate.get("sealed"), AnyValue(true));
    EXPECT_EQ(errorOf<Vex::ReinstantiationError>([&] {
                  harbour.insert("crate", {String("a"), U8{3}, Sea::Depth(2), Name("Carl")});
              }),
              "Test::Fleet::Crate a: weight cannot change from 1 to 3");
    EXPECT_EQ(harbour.lookup("crate", String("a")), crate.box);
    EXPECT_FALSE(harbour.lookup("crate", String("a")).isConstantEntity());
    EXPECT_EQ(harbour.remove("crate", {String("a")}), crate.box);
    EXPECT_EQ(harbour.count("crate"), 0U);
    EXPECT_EQ(errorOf<Vex::OperandError>([&] { harbour.insert("crate", {String("a")}); }),
              "Test::Fleet::Harbour.crate: insert: expected 4 arguments (Vex::String, U8, "
              "Sea::Depth, Vex::Name), found 1");
}

TEST(GeneratedOperations, ShareEntitiesUnderAKeyAndRemoveForNull) {
    Thing harbour("Harbour", {});
    auto const one = boxedChart(1);
    auto const two = boxedChart(2);
    EXPECT_EQ(harbour.insert("chart", {Name("north"), one}), one);
    EXPECT_EQ(harbour.insert("chart", {Name("north"), two}), two);
    EXPECT_EQ(harbour.lookup("chart", Name("north")), two);
    EXPECT_TRUE(harbour.lookup("chart", Name("north")).isConstantEntity());
    EXPECT_TRUE(harbour.insert("chart", {Name("north"), nullptr}).isNull());
    EXPECT_EQ(harbour.count("chart"), 0U);
}

TEST(GeneratedOperations, ShareEntitiesUnderTheirOwnKey) {
    Thing harbour("Harbour", {});
    Thing const bert("Captain", {Name("Bert"), nullptr});
    Thing const anna("Captain", {Name("Anna"), nullptr});
    EXPECT_EQ(harbour.insert("captain", {bert.box}), bert.box);
    harbour.insert("captain", {anna.box});
    EXPECT_EQ(harbour.keys("captain"), "Anna Bert ");
    EXPECT_EQ(harbour.remove("captain", {Name("Bert")}), bert.box);
    EXPECT_EQ(errorOf<Vex::OperandError>([&] { harbour.insert("captain", {boxedChart(1)}); }),
              "Test::Fleet::Harbour.captain: insert: argument 1: expected "
              "Vex::Ptr<Test::Fleet::Captain const>, found Vex::Ptr<Sea::Chart>");
}

TEST(GeneratedOperations, ChangeTheCollectionsOfAValue) {
    Thing voyage("Voyage", {Name("spring")});
    voyage.insert("stops", {String("Turku"), true});
    voyage.insert("berths", {Berth(4, "", 0)});
    voyage.set("depth", Sea::Depth(6));
    Thing harbour("Harbour", {});
    harbour.insert("voyage", {voyage.box});
    voyage.clear("stops");
    Thing const kept(harbour.lookup("voyage", Name("spring")));
    EXPECT_EQ(kept.keys("stops"), "Turku ");
    EXPECT_EQ(kept.keys("berths"), "4 ");
    EXPECT_EQ(voyage.keys("stops"), "");
    EXPECT_EQ(kept.get("depth"), AnyValue(Sea::Depth(6)));
}

TEST(GeneratedOperations, FreeWhatTheyCreate) {
    auto const before = Vex::allocTrackLiveCount("Test::Fleet::");
    {
        Thing harbour("Harbour", {});
        Thing hold(harbour.insert("hold", {Name("aft")}));
        hold.insert("crate", {String("a"), U8{1}, Sea::Depth(2), Name("Bert")});
        harbour.insert("watch", {});
        EXPECT_EQ(Vex::allocTrackLiveCount("Test::Fleet::"), before + 4);
    }
    EXPECT_EQ(Vex::allocTrackLiveCount("Test::Fleet::"), before);
}

} // namespace Test::Fleet
