#include "Vex/Reinstantiation.h"

#include "Nolt/EthAddr.h"
#include "Vex/Name.h"

#include <gtest/gtest.h>

TEST(Reinstantiation, NamesTypeKeyAttributeNewAndStoredValue) {
    try {
        Vex::throwMutatorReinstantiating("Test::Binding", "10.0.0.9", "preference", "2", "1");
        FAIL() << "nothing was thrown";
    } catch (Vex::ReinstantiationError const & error) {
        EXPECT_STREQ(error.what(), "Test::Binding 10.0.0.9: preference cannot change from 1 to 2");
    }
}

TEST(Reinstantiation, EscapesTheBytesOfTheKeyAndOfTheValues) {
    try {
        Vex::throwMutatorReinstantiating("Test::Binding", "leaf\x1b[2J", "remark", "b\n", "a\xff");
        FAIL() << "nothing was thrown";
    } catch (Vex::ReinstantiationError const & error) {
        EXPECT_STREQ(error.what(),
                     "Test::Binding leaf\\x1b[2J: remark cannot change from a\\xff to b\\x0a");
    }
}

TEST(Reinstantiation, WritesEveryKindOfAttribute) {
    EXPECT_EQ(Vex::attributeText(Vex::U8{200}), "200");
    EXPECT_EQ(Vex::attributeText(Vex::U32{4294967295}), "4294967295");
    EXPECT_EQ(Vex::attributeText(Vex::String("leaf1")), "leaf1");
    EXPECT_EQ(Vex::attributeText(Vex::Name("leaf1")), "leaf1");
    EXPECT_EQ(Vex::attributeText(Nolt::EthAddr::fromString("001c.730a.0b0c")), "00:1c:73:0a:0b:0c");
}
