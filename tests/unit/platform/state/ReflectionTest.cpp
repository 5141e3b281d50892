#include "Vex/AnyValue.h"
#include "Vex/Dir.h"
#include "Vex/Type.h"
#include "state/LRStatusV2.h"
#include "state/MacVtepFloodListV2.h"
#include "state/PublishStatus.h"
#include "state/SwitchInfoDir.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"
#include "state/VniStatusV2.h"

#include <gtest/gtest.h>

using namespace VxlanController;

namespace {

/// "NAME: BASE" of the record that reflection has of an entity.
std::string described(Vex::PtrInterface const & entity) {
    Vex::Type const & type = entity.fwkType();
    EXPECT_EQ(type.kind, Vex::Type::Kind::entity);
    EXPECT_EQ(type.operations, nullptr);
    return std::string(type.name) + ": " + (type.base ? std::string(type.base->name) : "-");
}

} // namespace

TEST(StateReflection, EveryEntityHasARecordOfItsOwn) {
    EXPECT_EQ(described(*Vex::makePtr<Vex::Dir>()), "Vex::Dir: Vex::PtrInterface");
    EXPECT_EQ(described(*Vex::makePtr<LRStatusV2>("red")),
              "VxlanController::LRStatusV2: Vex::Entity");
    EXPECT_EQ(described(*Vex::makePtr<MacVtepFloodListV2>(Nolt::EthAddr())),
              "VxlanController::MacVtepFloodListV2: Vex::Entity");
    EXPECT_EQ(described(*Vex::makePtr<Statestore::PublishStatus>()),
              "Statestore::PublishStatus: Vex::Entity");
    EXPECT_EQ(described(*Vex::makePtr<SwitchInfoDir>()),
              "VxlanController::SwitchInfoDir: Vex::Entity");
    EXPECT_EQ(described(*Vex::makePtr<SwitchInfo>("leaf1")),
              "VxlanController::SwitchInfo: Vex::PtrInterface");
    EXPECT_EQ(described(*Vex::makePtr<VniStatusDirV2>()),
              "VxlanController::VniStatusDirV2: Vex::Entity");
    EXPECT_EQ(described(*Vex::makePtr<VniFdbStatusV2>()),
              "VxlanController::VniFdbStatusV2: Vex::Entity");
    EXPECT_EQ(described(*Vex::makePtr<VniStatusV2>(Vxlan::Vni(10))),
              "VxlanController::VniStatusV2: Vex::Entity");
}

TEST(StateReflection, AnAnyValueHasTheRecordOfItsEntity) {
    Vex::Ptr<Vex::Entity const> const entity = Vex::makePtr<VniStatusDirV2>();
    EXPECT_EQ(Vex::AnyValue(entity).reflection()->name, "VxlanController::VniStatusDirV2");
}
