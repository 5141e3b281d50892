#include "state/VniTables.h"

#include "state/VniFdbStatusV2.h"
#include "state/VniStatusV2.h"

#include <gtest/gtest.h>

using namespace VxlanController;
using Nolt::EthAddr;
using Nolt::IpAddr;
using Nolt::IpGenAddr;

namespace {

EthAddr const hostMac = EthAddr::fromString("02:00:00:00:00:01");
EthAddr const otherMac = EthAddr::fromString("02:00:00:00:00:02");

/// Received and advertised state offer the same operations.
template <class Status>
class VniTablesTest : public testing::Test {
protected:
    Vex::Ptr<Status> status = make();

private:
    static Vex::Ptr<Status> make() {
        if constexpr (std::is_default_constructible_v<Status>) {
            return Vex::makePtr<Status>();
        } else {
            return Vex::makePtr<Status>(Vxlan::Vni(10));
        }
    }
};

using Statuses = testing::Types<VniStatusV2, VniFdbStatusV2>;
TYPED_TEST_SUITE(VniTablesTest, Statuses);

} // namespace

TYPED_TEST(VniTablesTest, AnAbsentMacYieldsTheDefaultEntry) {
    EXPECT_EQ(this->status->macVtepTable(hostMac), MacVtepV2());
    EXPECT_TRUE(!this->status->macVtepMultiPathTable(hostMac));
    EXPECT_EQ(this->status->macVtepFloodListTable(hostMac), nullptr);
}

TYPED_TEST(VniTablesTest, AWriterOverwritesTheEntryWithItsKey) {
    EXPECT_TRUE(this->status->macVtepIs(MacVtepV2(hostMac, IpAddr(1), 5)));
    EXPECT_FALSE(this->status->macVtepIs(MacVtepV2(hostMac, IpAddr(2), 6)));
    EXPECT_EQ(this->status->macVtepTable(hostMac), MacVtepV2(hostMac, IpAddr(2), 6));
    EXPECT_EQ(this->status->macVtepTable().size(), 1U);
}

TYPED_TEST(VniTablesTest, TheTablesAreKeyedSeparately) {
    MacVtepMultiPathV2 multiPath(hostMac);
    multiPath.vtepIpIs(IpAddr(1), true);
    EXPECT_TRUE(this->status->macVtepMultiPathIs(multiPath));
    auto const flood = Vex::makePtr<MacVtepFloodListV2>(otherMac);
    flood->vtepIpIs(IpAddr(2), true);
    EXPECT_TRUE(this->status->macVtepFloodListIs(flood));

    EXPECT_EQ(this->status->macVtepMultiPathTable(hostMac), multiPath);
    EXPECT_EQ(this->status->macVtepFloodListTable(otherMac), flood);
    EXPECT_EQ(this->status->macVtepFloodListTable(hostMac), nullptr);
    EXPECT_TRUE(this->status->macVtepTable().empty());
}

TYPED_TEST(VniTablesTest, ArpEntriesAreKeyedByTheirAddress) {
    auto const v4 = IpGenAddr::fromString("10.0.0.9");
    auto const v6 = IpGenAddr::fromString("2001:db8::9");
    EXPECT_TRUE(this->status->arpIs(ArpEntryV2(v4, hostMac, 1, 2)));
    EXPECT_TRUE(this->status->arpIs(ArpEntryV2(v6, hostMac, 1, 2)));
    EXPECT_FALSE(this->status->arpIs(ArpEntryV2(v4, otherMac, 3, 4)));
    EXPECT_EQ(this->status->arpTable().size(), 2U);
    EXPECT_EQ(this->status->arpTable().find(v4)->element().macAddress(), otherMac);
}

TYPED_TEST(VniTablesTest, EachTableIsFilledWithAllEntriesAtOnce) {
    using VxlanController::VniTables;
    auto const ip = IpGenAddr::fromString("10.0.0.9");
    std::vector<VniTables::MacVtepTable::Slot> unicast;
    std::vector<VniTables::MacVtepMultiPathTable::Slot> multiPath;
    std::vector<VniTables::MacVtepFloodListTable::Slot> flood;
    std::vector<VniTables::ArpTable::Slot> arp;
    unicast.emplace_back(MacVtepV2(hostMac, IpAddr(1), 2));
    multiPath.emplace_back(MacVtepMultiPathV2(hostMac));
    flood.emplace_back(Vex::makePtr<MacVtepFloodListV2>(hostMac));
    arp.emplace_back(ArpEntryV2(ip, hostMac, 1, 2));
    EXPECT_EQ(this->status->macVtepTableIs(unicast), std::nullopt);
    EXPECT_EQ(this->status->macVtepMultiPathTableIs(multiPath), std::nullopt);
    EXPECT_EQ(this->status->macVtepFloodListTableIs(flood), std::nullopt);
    EXPECT_EQ(this->status->arpTableIs(arp), std::nullopt);
    EXPECT_EQ(this->status->macVtepTable(hostMac), MacVtepV2(hostMac, IpAddr(1), 2));
    EXPECT_EQ(this->status->macVtepMultiPathTable().size(), 1U);
    EXPECT_NE(this->status->macVtepFloodListTable(hostMac), nullptr);
    EXPECT_EQ(this->status->arpTable().find(ip)->element().macAddress(), hostMac);
}

TYPED_TEST(VniTablesTest, FillingReportsARepeatedKey) {
    std::vector<VxlanController::VniTables::MacVtepTable::Slot> unicast;
    for (auto const & key : {hostMac, otherMac, hostMac}) {
        unicast.emplace_back(MacVtepV2(key, IpAddr(1), 2));
    }
    EXPECT_EQ(this->status->macVtepTableIs(unicast), 2U);
}

TEST(VniStatusV2, IsTrackedUnderItsName) {
    auto const before = Vex::allocTrackLiveCount("VxlanController::VniStatusV2");
    auto const status = Vex::makePtr<VniStatusV2>(Vxlan::Vni(1));
    EXPECT_EQ(Vex::allocTrackLiveCount("VxlanController::VniStatusV2"), before + 1);
}
