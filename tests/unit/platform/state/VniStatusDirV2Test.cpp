#include "state/VniStatusDirV2.h"

#include <gtest/gtest.h>

using Vxlan::Vni;
using VxlanController::VniStatusDirV2;

TEST(VniStatusDirV2, FindsAVniOrReturnsNull) {
    auto const dir = Vex::makePtr<VniStatusDirV2>();
    auto const ten = dir->vniStatusV2Is(Vni(10));
    EXPECT_EQ(dir->vniStatusV2Is(Vni(10)), ten);
    EXPECT_EQ(dir->vniStatusV2(Vni(10)), ten);
    EXPECT_EQ(dir->vniStatusV2(Vni(11)), nullptr);
}

TEST(VniStatusDirV2, WalksItsVnisInNumericOrder) {
    auto const dir = Vex::makePtr<VniStatusDirV2>();
    for (Vex::U32 vni : {65536U, 10U, 4096U, 0U, 16777215U}) {
        dir->vniStatusV2Is(Vni(vni));
    }
    std::string order;
    for (auto const & status : dir->vniStatusV2()) {
        order += status.vni().stringValue() + " ";
    }
    EXPECT_EQ(order, "0 10 4096 65536 16777215 ");
}
