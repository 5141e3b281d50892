#include "modelc/check/Checker.h"

#include "modelc/Compiler.h"

#include <gtest/gtest.h>

namespace modelc {

namespace {

constexpr char const * imports = "namespace N\n"
                                 "import text Text from \"t.h\"\n"
                                 "import value Key from \"k.h\"\n"
                                 "import scalar Small from \"s.h\"\n"
                                 "import value Far[id : Key] from \"f.h\"\n"
                                 "import entity Other from \"o.h\"\n";

/// The report on a model in which `text` starts on line 7.
std::string reportOn(std::string const & text) {
    auto const compiled = compile(imports + text, {"m", "m", "m.h"});
    EXPECT_EQ(compiled.report.empty(), !compiled.header.empty());
    EXPECT_EQ(compiled.report.empty(), !compiled.source.empty());
    return compiled.report;
}

struct Case {
    char const * text;
    char const * report;
};

void expectReports(std::initializer_list<Case> cases) {
    for (auto const & wrong : cases) {
        EXPECT_EQ(reportOn(wrong.text), wrong.report) << wrong.text;
    }
}

} // namespace

TEST(Checker, ReportsNothingForAValidModel) {
    EXPECT_EQ(reportOn("value V(k) { k : Key }\n"
                       "entity E(k, o) with factory { k : Key  o : shared Other  v : V[k] }\n"
                       "registration { E V }"),
              "");
}

TEST(Checker, ReportsUnknownAndDuplicateTypes) {
    expectReports({
        {"value V(x) { x : Kee }\nregistration { V }",
         "m:7:18: unknown type 'Kee'; did you mean 'Key'?\n"},
        {"value V(x) { x : Elsewhere::Thing }\nregistration { V }",
         "m:7:18: unknown type 'Elsewhere::Thing'; declare it or import it\n"},
        {"import value Key from \"again.h\"\nregistration { }",
         "m:7:14: 'Key' is already declared on line 3\n"},
        {"value Key() { }\nregistration { }", "m:7:7: 'Key' is already declared on line 3\n"
                                              "m:8:1: 'Key' is missing from the registration\n"},
        {"value V() { }\nentity V() { }\nregistration { V }",
         "m:8:8: 'V' is already declared on line 7\n"
         "m:9:1: 'V' is missing from the registration\n"},
        {"import value U8 from \"u.h\"\nregistration { }", "m:7:14: 'U8' is a built-in type\n"},
        {"value low() { }\nregistration { low }",
         "m:7:7: the type name 'low' must start with an upper-case letter\n"},
        {"import valu X from \"x.h\"\nregistration { }",
         "m:7:8: unknown kind of import 'valu'; did you mean 'value'?\n"},
        {"import value X from \"\"\nregistration { }", "m:7:14: the header of 'X' is empty\n"},
        {"import entity X[id : Key] from \"x.h\"\nregistration { }",
         "m:7:17: 'X' is not a value, so it cannot have a key\n"},
        {"import value X[id : Kye] from \"x.h\"\nregistration { }",
         "m:7:21: unknown type 'Kye'; did you mean 'Key'?\n"},
        {"import value X[id : Kye] from \"x.h\"\nentity E() { x : X[id] }\nregistration { E }",
         "m:7:21: unknown type 'Kye'; did you mean 'Key'?\n"},
    });
}

TEST(Checker, ReportsInvalidAttributeNames) {
    expectReports({
        {"value V(x) { x : Key  x : Key }\nregistration { V }",
         "m:7:23: 'x' is already declared on line 7\n"},
        {"value V() { X : Key }\nregistration { V }",
         "m:7:13: the attribute name 'X' must start with a lower-case letter\n"},
        {"value V() { x_ : Key }\nregistration { V }",
         "m:7:13: the attribute name 'x_' must not end with '_'\n"},
        {"value V() { switch : Key }\nregistration { V }",
         "m:7:13: the attribute name 'switch' is a C++ keyword\n"},
        {"entity E() { method delete() }\nregistration { E }",
         "m:7:21: the method name 'delete' is a C++ keyword\n"},
        {"entity E() { fwkType : Key }\nregistration { E }",
         "m:7:14: 'fwkType' is an operation that every entity has\n"},
        {"entity E() { x : set[Key]\nxDelAll : Key }\nregistration { E }",
         "m:8:1: 'xDelAll' is already an operation of 'x' on line 7\n"},
        {"entity B() { xIs : Small }\nentity E() : B { x : Small }\nregistration { B E }",
         "m:8:18: the operation 'xIs' of 'x' is already an attribute on line 7\n"},
        {"entity B() { x : Small }\nentity E() : B { x : Small }\nregistration { B E }",
         "m:8:18: 'x' is already declared on line 7\n"},
        {"entity E() { method m(x : U8, x : U8, y : Other, z : shared U8, Q : U8) }\n"
         "registration { E }",
         "m:7:31: duplicate argument 'x'\n"
         "m:7:43: 'Other' is an entity; write 'shared Other'\n"
         "m:7:61: 'U8' is not an entity; only entities can be shared\n"
         "m:7:65: the argument name 'Q' must start with a lower-case letter\n"},
    });
}

TEST(Checker, ReportsAttributesThatDoNotFitTheirTypes) {
    expectReports({
        {"entity E() { x : Other }\nregistration { E }",
         "m:7:18: 'Other' is an entity; write 'owned Other' or 'shared Other'\n"},
        {"entity E() { x : owned Other }\nregistration { E }",
         "m:7:24: 'Other' is imported; only entities of this model can be owned\n"},
        {"entity E() { x : owned Key }\nregistration { E }",
         "m:7:24: 'Key' is not an entity; only entities can be owned\n"},
        {"entity E() { x : shared Key }\nregistration { E }",
         "m:7:25: 'Key' is not an entity; only entities can be shared\n"},
        {"entity E() { x : U8[key] }\nregistration { E }",
         "m:7:18: 'U8' has no attributes and so no key; write 'set[U8]' for a set\n"},
        {"entity E() { x : set[Other] }\nregistration { E }",
         "m:7:22: 'Other' has no ordering, so it cannot be a key\n"},
        {"entity E() { x : constant U8 = 1 }\nregistration { E }",
         "m:7:27: a constant must have a text type; 'U8' is not one\n"},
        {"entity E() { x : constant Text }\nregistration { E }",
         "m:7:14: the constant 'x' has no value; write '= \"...\"'\n"},
        {"entity E() { x : settable Key }\nregistration { E }",
         "m:7:18: 'settable' applies only to constructor arguments; 'x' is not one\n"},
        {"value V() { x : owned V  y : shared Other  method m() }\nregistration { V }",
         "m:7:13: the value 'V' cannot own an entity\n"
         "m:7:23: 'V' is not an entity; only entities can be owned\n"
         "m:7:26: the value 'V' cannot share an entity\n"
         "m:7:51: the value 'V' cannot have a method\n"},
        {"entity S(k) { k : Key }\nentity E() { s : owned S }\nregistration { E S }",
         "m:8:24: 'S' has constructor arguments, so it cannot be created on demand\n"},
    });
}

TEST(Checker, ReportsDefaultsThatDoNotFitTheirTypes) {
    expectReports({
        {"entity E() { a : U8 = 256 }\nregistration { E }",
         "m:7:23: 256 is too large for 'a'; the maximum of a U8 is 255\n"},
        {"entity E() { a : U64 = 18446744073709551616 }\nregistration { E }",
         "m:7:24: 18446744073709551616 is too large for 'a'; the maximum of a U64 is "
         "18446744073709551615\n"},
        {"entity E() { a : U16 = true }\nregistration { E }",
         "m:7:24: the default of 'a' must be a number from 0 to 65535\n"},
        {"entity E() { a : bool = 1 }\nregistration { E }",
         "m:7:25: the default of 'a' must be 'true' or 'false'\n"},
        {"entity E() { a : Text = 1 }\nregistration { E }",
         "m:7:25: 'a' is a text; write it in quotes\n"},
        {"entity E() { a : Key = \"x\" }\nregistration { E }",
         "m:7:24: 'a' takes the default of 'Key'; only numbers, bool and texts can have one "
         "of their own\n"},
        {"entity E() { a : set[Key] = 1 }\nregistration { E }",
         "m:7:29: 'a' is not a single value, so it cannot have a default\n"},
        {"entity E(a) { a : U8 = 1 }\nregistration { E }",
         "m:7:24: 'a' is always passed to the constructor, so it cannot have a default\n"},
    });
    EXPECT_EQ(reportOn("value V(a) { a : U8 = 255  b : U64 = 18446744073709551615\n"
                       "c : Text = \"\"  d : bool = false }\nregistration { V }"),
              "");
}

TEST(Checker, ReportsConstructorArgumentsThatDoNotFitTheAttributes) {
    expectReports({
        {"value V(kee) { key : Key }\nregistration { V }",
         "m:7:9: 'V' has no attribute 'kee'; did you mean 'key'?\n"},
        {"value V(x, x) { x : Key }\nregistration { V }",
         "m:7:12: duplicate constructor argument 'x'\n"},
        {"value V(x) { x : set[Key] }\nregistration { V }",
         "m:7:9: 'x' cannot be a constructor argument; only single values and shared entities "
         "can\n"},
        {"value V(b, a) { a : Key  b : Key }\nregistration { V }",
         "m:7:12: constructor arguments must be in the order of the attributes; 'a' is declared "
         "before 'b'\n"},
        {"entity B(x, y) { x : Key  y : Key }\nentity E(x, z) : B { z : Key }\n"
         "registration { B E }",
         "m:8:8: the constructor arguments of 'E' must start with those of its base: x, y\n"},
        {"entity B() { x : Key }\nentity E(x) : B { }\nregistration { B E }",
         "m:8:10: 'x' belongs to the base, which does not take it as a constructor argument\n"},
    });
}

TEST(Checker, ReportsInvalidBasesAndExtras) {
    expectReports({
        {"value V() : V { }\nregistration { V }",
         "m:7:13: the value 'V' cannot have a base; only entities can\n"},
        {"entity E() : Bass { }\nentity Base() { }\nregistration { E Base }",
         "m:7:14: the base 'Bass' is not a type of this model; did you mean 'Base'?\n"},
        {"entity E() : Other { }\nregistration { E }",
         "m:7:14: the base 'Other' is not a type of this model\n"},
        {"value V() { }\nentity E() : V { }\nregistration { V E }",
         "m:8:14: the base 'V' is a value, not an entity\n"},
        {"entity E() : B { }\nentity B() { }\nregistration { B E }",
         "m:7:14: the base 'B' must be declared before 'E'\n"},
        {"entity E() : E { }\nregistration { E }",
         "m:7:14: the base 'E' must be declared before 'E'\n"},
        {"entity E() with factori { }\nregistration { E }",
         "m:7:17: expected 'factory' or 'creator' after 'with', found 'factori'; did you mean "
         "'factory'?\n"},
        {"entity E() with factory, factory { }\nregistration { E }",
         "m:7:26: duplicate 'factory'\n"},
        {"value V() with creator { }\nregistration { V }",
         "m:7:16: the value 'V' cannot have a creator; only entities can\n"},
    });
}

TEST(Checker, ReportsKeysThatDoNotFitTheirElements) {
    expectReports({
        {"value V(key) { key : Key }\nentity E() { v : V[kee] }\nregistration { V E }",
         "m:8:20: 'V' has no attribute 'kee'; did you mean 'key'?\n"},
        {"value V(key) { key : Key }\nentity E() { v : V[Key] }\nregistration { V E }",
         "m:8:20: 'V' must be keyed by one of its attributes, not by a type\n"},
        {"value V() { k : set[Key] }\nentity E() { v : V[k] }\nregistration { V E }",
         "m:8:20: 'k' is not a single value, so it cannot be a key\n"},
        {"value W() { }\nvalue V(w) { w : W }\nentity E() { v : V[w] }\nregistration { V W E }",
         "m:9:20: 'W' has no ordering, so it cannot be a key\n"},
        {"entity E() { v : Key[id] }\nregistration { E }",
         "m:7:22: 'Key' is imported without a key; import it as 'Key[id : Type]'\n"},
        {"entity E() { v : Far[ip] }\nregistration { E }",
         "m:7:22: 'Far' is imported with the key 'id'\n"},
        {"entity S(a, b) { a : Key  b : Key }\nentity E() { s : owned S[b] }\n"
         "registration { S E }",
         "m:8:26: the key of an owned entity is its first constructor argument; that of 'S' is "
         "'a'\n"},
        {"entity S() { a : Key }\nentity E() { s : owned S[a] }\nregistration { S E }",
         "m:8:26: the key of an owned entity is its first constructor argument; 'S' has none\n"},
        {"entity S(a, o) { a : Key  o : shared Other }\nentity E() { s : owned S[a] }\n"
         "registration { S E }",
         "m:8:24: 'S' takes 'o', which has no text form, so it cannot be found or created by "
         "key\n"},
        {"entity E() { s : shared Other[id] }\nregistration { E }",
         "m:7:31: 'Other' is imported, so its attributes are not known; key it by a type\n"},
        {"entity S() { a : Key }\nentity E() { s : shared S[a] }\nregistration { S E }",
         "m:8:27: 'a' can change while 'S' is shared; the key must be a constructor argument\n"},
        {"entity E() { s : shared Other[Kye] }\nregistration { E }",
         "m:7:31: unknown type 'Kye'; did you mean 'Key'?\n"},
        {"entity E() { s : shared Other[Other] }\nregistration { E }",
         "m:7:31: 'Other' has no ordering, so it cannot be a key\n"},
    });
}

TEST(Checker, RejectsTypesThatContainThemselves) {
    expectReports({
        {"value V() { v : V }\nregistration { V }", "m:7:13: 'V' would contain itself: V > V\n"},
        {"value V() { w : W }\nvalue W() { v : V }\nregistration { V W }",
         "m:8:13: 'V' would contain itself: V > W > V\n"},
        {"entity A(k) { k : Key  b : owned B[k] }\nentity B(k) { k : Key  a : owned A[k] }\n"
         "registration { A B }",
         "m:8:24: 'A' would contain itself: A > B > A\n"},
    });
    // A type can refer to itself through a pointer.
    EXPECT_EQ(reportOn("entity A() { a : owned A  b : shared A }\nregistration { A }"), "");
}

TEST(Checker, RequiresEveryTypeToBeRegisteredExactlyOnce) {
    expectReports({
        {"value V() { }\nentity E() { }\nregistration { E }",
         "m:9:1: 'V' is missing from the registration\n"},
        {"value V() { }\n", "m:8:1: 'V' is missing from the registration\n"},
        {"value V() { }\nregistration { V\nV }", "m:9:1: 'V' is already registered on line 8\n"},
        {"value Voyage() { }\nregistration { Voyage Voyge }",
         "m:8:23: the registered name 'Voyge' is not a type of this model; did you mean "
         "'Voyage'?\n"},
        {"value V() { }\nregistration { V Key }",
         "m:8:18: the registered name 'Key' is not a type of this model\n"},
    });
}

TEST(Checker, ReportsAllErrorsInOneRun) {
    EXPECT_EQ(reportOn("value V(a) { b : Kee }\nentity E() { x : Other }\nregistration { V }"),
              "m:7:9: 'V' has no attribute 'a'\n"
              "m:7:18: unknown type 'Kee'; did you mean 'Key'?\n"
              "m:8:18: 'Other' is an entity; write 'owned Other' or 'shared Other'\n"
              "m:9:1: 'E' is missing from the registration\n");
}

TEST(Checker, ASyntaxErrorIsReportedAlone) {
    EXPECT_EQ(reportOn("value V(x) { x : Kee ; }"), "m:7:22: ';' has no meaning in a model\n");
}

} // namespace modelc
