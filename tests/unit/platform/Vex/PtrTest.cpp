#include "Vex/Ptr.h"

#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

using Vex::makePtr;
using Vex::Ptr;

TEST(Ptr, DestroysTheObjectWithTheLastPtr) {
    Ptr<Counted> first = makePtr<Counted>(1);
    Ptr<Counted const> second = first;
    EXPECT_EQ(first->references(), 2U);
    first = nullptr;
    EXPECT_EQ(Counted::alive, 1);
    second = nullptr;
    EXPECT_EQ(Counted::alive, 0);
}

TEST(Ptr, MovesWithoutCounting) {
    Ptr<Counted> first = makePtr<Counted>(1);
    Ptr<Counted> const second = std::move(first);
    EXPECT_EQ(second->references(), 1U);
    EXPECT_EQ(first, nullptr); // NOLINT(bugprone-use-after-move): a moved-from Ptr is null
}

TEST(Ptr, SurvivesSelfAssignment) {
    Ptr<Counted> only = makePtr<Counted>(7);
    auto & alias = only;
    only = alias;
    EXPECT_EQ(only->number(), 7);
    EXPECT_EQ(only->references(), 1U);
}

TEST(Ptr, ConvertsToABaseAndBackWithACheckedDowncast) {
    Ptr<Vex::Entity> const base = makePtr<Counted>(3);
    EXPECT_EQ(Vex::dynamicPtr<Counted>(base), base);

    class Other : public Vex::Entity {};

    EXPECT_EQ(Vex::dynamicPtr<Other>(base), nullptr);
    EXPECT_EQ(Vex::dynamicPtr<Counted>(Ptr<Vex::Entity>()), nullptr);
}

TEST(Ptr, CanBeMadeAgainFromAPlainPointer) {
    Ptr<Counted> const first = makePtr<Counted>(1);
    {
        Ptr<Counted> const again(first.ptr());
        EXPECT_EQ(first->references(), 2U);
    }
    EXPECT_EQ(first->references(), 1U);
}

TEST(PtrInterface, IsNotNotificationActiveUntilSwitchedOn) {
    auto const object = makePtr<Counted>(1);
    EXPECT_FALSE(object->hasNotificationActive());
    object->hasNotificationActiveIs(true);
    EXPECT_TRUE(object->hasNotificationActive());
}
