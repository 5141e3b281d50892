#include "modelc/emit/StringForms.h"

#include "modelc/Compiler.h"

#include <gtest/gtest.h>

namespace modelc {

namespace {

constexpr char const * formsModel = R"model(namespace N::M

import text  Vex::String from "Vex/String.h"
import value Sea::Key    from "sea/Key.h"

value Berth(number) {
    number : U16
    flag   : constant Vex::String = "blue"
    key    : Sea::Key
    theNameOfTheShipThatLiesThere : Vex::String
}

value Voyage(name) {
    name  : Vex::String
    stops : set[Vex::String]
    berth : Berth
}

value Nothing() {
}

value Outer() {
    voyage : Voyage
}

entity Ship() {
    berth : Berth
}

registration { Berth Voyage Nothing Outer Ship }
)model";

Compiled const & compiled() {
    static Compiled const result =
        compile(formsModel, {"Small.model", "Folder/Small.model", "Folder/Small.h"});
    EXPECT_EQ(result.report, "");
    return result;
}

void expectHolds(std::string const & text, std::string const & part) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\nis not in\n" << text;
}

} // namespace

TEST(StringForms, AreDeclaredAfterTheClass) {
    expectHolds(compiled().header, R"golden(
/// The string form of the value.
[[gnu::visibility("default")]] Vex::String valueToStrep(Berth const & value);

/// Writes the string form.
[[gnu::visibility("default")]] std::ostream & operator<<(std::ostream & out, Berth const & value);
)golden");
    expectHolds(compiled().header, R"golden(
/// The string form of the value, with None for a collection.
[[gnu::visibility("default")]] Vex::String valueToStrep(Voyage const & value);
)golden");
}

TEST(StringForms, TheConstructorIsDeclaredWithTheOthers) {
    expectHolds(compiled().header, R"golden(
    explicit Berth(U16 number);

    /// Reads the string form and advances `it` past it; throws ParseError or RangeError.
    Berth(Vex::String::IteratorConst & it, Vex::String::IteratorConst const & end);
)golden");
    expectHolds(compiled().header, R"golden(
    /// Aborts: a value with a collection cannot be read from text.
    Voyage(Vex::String::IteratorConst &, Vex::String::IteratorConst const &);
)golden");
}

TEST(StringForms, AreWrittenAttributeByAttribute) {
    expectHolds(compiled().source, R"golden(
Vex::String valueToStrep(Berth const & value) {
    using Vex::valueToStrep;
    Vex::String strep("Value('N::M::Berth', ** {");
    strep += "'number': " + valueToStrep(value.number());
    strep += ", 'key': " + valueToStrep(value.key());
    strep +=
        ", 'theNameOfTheShipThatLiesThere': " + valueToStrep(value.theNameOfTheShipThatLiesThere());
    strep += "})";
    return strep;
}

std::ostream & operator<<(std::ostream & out, Berth const & value) {
    return out << valueToStrep(value);
}
)golden");
}

TEST(StringForms, AreReadAttributeByAttribute) {
    expectHolds(compiled().source, R"golden(
Berth::Berth(Vex::String::IteratorConst & it, Vex::String::IteratorConst const & end) {
    Vex::needString(it, end, "Value('N::M::Berth', ** {");
    Vex::needString(it, end, "'number': ");
    try {
        number_ = Vex::deserializeAttr<U16>(it, end);
    } catch (Vex::RangeError const & error) {
        Vex::rethrowFromDeserializeAttr(error, "number");
    } catch (Vex::ParseError const & error) {
        Vex::rethrowFromDeserializeAttr(error, "number");
    }
    Vex::needString(it, end, ", 'key': ");
    try {
        key_ = Vex::deserializeAttr<Sea::Key>(it, end);
    } catch (Vex::RangeError const & error) {
        Vex::rethrowFromDeserializeAttr(error, "key");
    } catch (Vex::ParseError const & error) {
        Vex::rethrowFromDeserializeAttr(error, "key");
    }
    Vex::needString(it, end, ", 'theNameOfTheShipThatLiesThere': ");
    try {
        theNameOfTheShipThatLiesThere_ = Vex::deserializeAttr<Vex::String>(it, end);
    } catch (Vex::RangeError const & error) {
        Vex::rethrowFromDeserializeAttr(error, "theNameOfTheShipThatLiesThere");
    } catch (Vex::ParseError const & error) {
        Vex::rethrowFromDeserializeAttr(error, "theNameOfTheShipThatLiesThere");
    }
    Vex::needString(it, end, "})");
}
)golden");
}

TEST(StringForms, ACollectionIsLeftOutAndMakesTheValueUnreadable) {
    expectHolds(compiled().source, R"golden(
Voyage::Voyage(Vex::String::IteratorConst &, Vex::String::IteratorConst const &) {
    Vex::assertThat(false, "!\"No String constructor for Voyage - has collection\"");
}

Vex::String valueToStrep(Voyage const & value) {
    using Vex::valueToStrep;
    Vex::String strep("Value('N::M::Voyage', ** {");
    strep += "'name': " + valueToStrep(value.name());
    strep += ", 'stops': None";
    strep += ", 'berth': " + valueToStrep(value.berth());
    strep += "})";
    return strep;
}
)golden");
    expectHolds(compiled().source, R"golden(
Outer::Outer(Vex::String::IteratorConst &, Vex::String::IteratorConst const &) {
    Vex::assertThat(false, "!\"No String constructor for Outer - has collection\"");
}
)golden");
}

TEST(StringForms, OfAValueWithoutAttributesIgnoreTheValue) {
    expectHolds(compiled().source, R"golden(
Nothing::Nothing(Vex::String::IteratorConst & it, Vex::String::IteratorConst const & end) {
    Vex::needString(it, end, "Value('N::M::Nothing', ** {");
    Vex::needString(it, end, "})");
}

Vex::String valueToStrep(Nothing const &) {
    Vex::String strep("Value('N::M::Nothing', ** {");
    strep += "})";
    return strep;
}
)golden");
}

TEST(StringForms, AreNotGeneratedForEntities) {
    EXPECT_EQ(compiled().source.find("valueToStrep(Ship"), std::string::npos);
    EXPECT_EQ(compiled().header.find("valueToStrep(Ship"), std::string::npos);
    auto const entity = compile("namespace N\nentity E() { }\nregistration { E }\n",
                                {"Small.model", "Folder/Small.model", "Folder/Small.h"});
    EXPECT_EQ(entity.source.find("Strep"), std::string::npos);
    EXPECT_EQ(entity.source.find("Vex/Assert.h"), std::string::npos);
}

TEST(StringForms, TheAssertionHeaderIsIncludedOnlyIfUsed) {
    auto const value = compile("namespace N\nvalue V() { }\nregistration { V }\n",
                               {"Small.model", "Folder/Small.model", "Folder/Small.h"});
    expectHolds(value.source, "#include \"Folder/Small.h\"\n\n#include \"Vex/Strep.h\"\n");
    expectHolds(compiled().source,
                "#include \"Folder/Small.h\"\n\n#include \"Vex/Assert.h\"\n#include "
                "\"Vex/Strep.h\"\n#include \"Vex/String.h\"\n\n");
}

} // namespace modelc
