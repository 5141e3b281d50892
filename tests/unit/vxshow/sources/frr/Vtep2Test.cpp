#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

TEST(FrrCaptures, TheWholeStateOfVtep2) {
    auto const answer = FakeZebra("vtep2").ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_FALSE(answer.findings.warning());
    EXPECT_EQ(linesOf(answer.facts),
              R"(switch leaf1 id 00:00:5e:00:53:e1 vtep 10.0.0.2 router tenant1 router tenant2
leaf1 vni 10
leaf1 vni 20
leaf1 vni 4098
leaf1 mac 10 02:00:10:00:02:01 10.0.0.2 moves 0
leaf1 mac 10 02:00:10:00:02:02 10.0.0.2 moves 0
leaf1 mac 10 02:00:10:00:02:a1 10.0.0.2 moves 0
leaf1 mac 10 02:00:10:00:02:a2 10.0.0.2 moves 0
leaf1 mac 10 02:00:10:00:02:a3 10.0.0.2 moves 0
leaf1 mac 10 02:00:10:00:02:fe 10.0.0.2 moves 0
leaf1 mac 20 02:00:20:00:02:01 10.0.0.2 moves 0
leaf1 mac 20 02:00:20:00:02:02 10.0.0.2 moves 0
leaf1 mac 20 02:00:20:00:02:03 10.0.0.2 moves 0
leaf1 mac 20 02:00:20:00:02:fe 10.0.0.2 moves 0
leaf1 mac 4098 02:40:98:00:02:01 10.0.0.2 moves 0
leaf1 mac 4098 02:40:98:00:02:02 10.0.0.2 moves 0
leaf1 mac 4098 02:40:98:00:02:03 10.0.0.2 moves 0
leaf1 mac 4098 02:40:98:00:e5:01 10.0.0.2 moves 0
leaf1 flood 10 00:00:00:00:00:00 10.0.0.2
leaf1 flood 20 00:00:00:00:00:00 10.0.0.2
leaf1 flood 4098 00:00:00:00:00:00 10.0.0.2
leaf1 arp 10 192.168.10.21 02:00:10:00:02:01 changes 0
leaf1 arp 10 192.168.10.22 02:00:10:00:02:02 changes 0
leaf1 arp 10 192.168.10.252 02:00:10:00:02:fe changes 0
leaf1 arp 10 2001:db8:10::21 02:00:10:00:02:01 changes 0
leaf1 arp 10 2001:db8:10::22 02:00:10:00:02:02 changes 0
leaf1 arp 10 2001:db8:10::252 02:00:10:00:02:fe changes 0
leaf1 arp 10 fe80::10ff:fe00:2fe 02:00:10:00:02:fe changes 0
leaf1 arp 20 192.168.20.21 02:00:20:00:02:01 changes 0
leaf1 arp 20 192.168.20.22 02:00:20:00:02:02 changes 0
leaf1 arp 20 192.168.20.23 02:00:20:00:02:03 changes 0
leaf1 arp 20 192.168.20.252 02:00:20:00:02:fe changes 0
leaf1 arp 20 2001:db8:20::21 02:00:20:00:02:01 changes 0
leaf1 arp 20 2001:db8:20::22 02:00:20:00:02:02 changes 0
leaf1 arp 20 2001:db8:20::23 02:00:20:00:02:03 changes 0
leaf1 arp 20 2001:db8:20::252 02:00:20:00:02:fe changes 0
leaf1 arp 20 fe80::20ff:fe00:2fe 02:00:20:00:02:fe changes 0
leaf1 arp 4098 10.98.0.21 02:40:98:00:02:01 changes 0
leaf1 arp 4098 10.98.0.22 02:40:98:00:02:02 changes 0
leaf1 arp 4098 10.98.0.150 02:40:98:00:e5:01 changes 0
remote vni 10
remote vni 20
remote vni 4098
remote mac 10 02:00:10:00:01:01 10.0.0.1 moves 0
remote mac 10 02:00:10:00:01:02 10.0.0.1 moves 0
remote mac 10 02:00:10:00:01:a1 10.0.0.1 moves 0
remote mac 10 02:00:10:00:01:a2 10.0.0.1 moves 0
remote mac 10 02:00:10:00:01:a3 10.0.0.1 moves 0
remote mac 10 02:00:10:00:01:fe 10.0.0.1 moves 0
remote mac 10 02:00:10:00:03:01 10.0.0.3 moves 0
remote mac 10 02:00:10:00:03:02 10.0.0.3 moves 0
remote mac 10 02:00:10:00:03:a1 10.0.0.3 moves 0
remote mac 10 02:00:10:00:03:a2 10.0.0.3 moves 0
remote mac 10 02:00:10:00:03:a3 10.0.0.3 moves 0
remote mac 10 02:00:10:00:03:fe 10.0.0.3 moves 0
remote mac 20 02:00:20:00:01:01 10.0.0.1 moves 0
remote mac 20 02:00:20:00:01:02 10.0.0.1 moves 0
remote mac 20 02:00:20:00:01:03 10.0.0.1 moves 0
remote mac 20 02:00:20:00:01:fe 10.0.0.1 moves 0
remote mac 20 02:00:20:00:03:01 10.0.0.3 moves 0
remote mac 20 02:00:20:00:03:02 10.0.0.3 moves 0
remote mac 20 02:00:20:00:03:03 10.0.0.3 moves 0
remote mac 20 02:00:20:00:03:fe 10.0.0.3 moves 0
remote mac 4098 02:40:98:00:01:01 10.0.0.1 moves 0
remote mac 4098 02:40:98:00:01:02 10.0.0.1 moves 0
remote mac 4098 02:40:98:00:01:03 10.0.0.1 moves 0
remote mac 4098 02:40:98:00:03:01 10.0.0.3 moves 0
remote mac 4098 02:40:98:00:03:02 10.0.0.3 moves 0
remote mac 4098 02:40:98:00:03:03 10.0.0.3 moves 0
remote mac 4098 02:40:98:00:ee:01 10.0.0.3 moves 2
remote mac 4098 02:40:98:00:ee:02 10.0.0.1 moves 2
remote mac 4098 02:40:98:00:ee:03 10.0.0.1 moves 10
remote flood 10 00:00:00:00:00:00 10.0.0.1
remote flood 10 00:00:00:00:00:00 10.0.0.3
remote flood 20 00:00:00:00:00:00 10.0.0.1
remote flood 20 00:00:00:00:00:00 10.0.0.3
remote flood 4098 00:00:00:00:00:00 10.0.0.1
remote flood 4098 00:00:00:00:00:00 10.0.0.3
remote arp 10 192.168.10.11 02:00:10:00:01:01 changes 0
remote arp 10 192.168.10.12 02:00:10:00:01:02 changes 0
remote arp 10 192.168.10.31 02:00:10:00:03:01 changes 0
remote arp 10 192.168.10.32 02:00:10:00:03:02 changes 0
remote arp 10 192.168.10.251 02:00:10:00:01:fe changes 0
remote arp 10 192.168.10.253 02:00:10:00:03:fe changes 0
remote arp 10 2001:db8:10::11 02:00:10:00:01:01 changes 0
remote arp 10 2001:db8:10::12 02:00:10:00:01:02 changes 0
remote arp 10 2001:db8:10::31 02:00:10:00:03:01 changes 0
remote arp 10 2001:db8:10::32 02:00:10:00:03:02 changes 0
remote arp 10 2001:db8:10::251 02:00:10:00:01:fe changes 0
remote arp 10 2001:db8:10::253 02:00:10:00:03:fe changes 0
remote arp 10 fe80::10ff:fe00:1fe 02:00:10:00:01:fe changes 0
remote arp 10 fe80::10ff:fe00:3fe 02:00:10:00:03:fe changes 0
remote arp 20 192.168.20.11 02:00:20:00:01:01 changes 0
remote arp 20 192.168.20.12 02:00:20:00:01:02 changes 0
remote arp 20 192.168.20.13 02:00:20:00:01:03 changes 0
remote arp 20 192.168.20.31 02:00:20:00:03:01 changes 0
remote arp 20 192.168.20.32 02:00:20:00:03:02 changes 0
remote arp 20 192.168.20.33 02:00:20:00:03:03 changes 0
remote arp 20 192.168.20.251 02:00:20:00:01:fe changes 0
remote arp 20 192.168.20.253 02:00:20:00:03:fe changes 0
remote arp 20 2001:db8:20::11 02:00:20:00:01:01 changes 0
remote arp 20 2001:db8:20::12 02:00:20:00:01:02 changes 0
remote arp 20 2001:db8:20::13 02:00:20:00:01:03 changes 0
remote arp 20 2001:db8:20::31 02:00:20:00:03:01 changes 0
remote arp 20 2001:db8:20::32 02:00:20:00:03:02 changes 0
remote arp 20 2001:db8:20::33 02:00:20:00:03:03 changes 0
remote arp 20 2001:db8:20::251 02:00:20:00:01:fe changes 0
remote arp 20 2001:db8:20::253 02:00:20:00:03:fe changes 0
remote arp 20 fe80::20ff:fe00:1fe 02:00:20:00:01:fe changes 0
remote arp 20 fe80::20ff:fe00:3fe 02:00:20:00:03:fe changes 0
remote arp 4098 10.98.0.11 02:40:98:00:01:01 changes 0
remote arp 4098 10.98.0.12 02:40:98:00:01:02 changes 0
remote arp 4098 10.98.0.31 02:40:98:00:03:01 changes 0
remote arp 4098 10.98.0.102 02:40:98:00:ee:02 changes 2
router tenant1 port 192.168.10.252/24 vni 10 02:00:10:00:02:fe 10.0.0.2
router tenant1 port 192.168.20.252/24 vni 20 02:00:20:00:02:fe 10.0.0.2
router tenant1 port 2001:db8:10::252/64 vni 10 02:00:10:00:02:fe 10.0.0.2
router tenant1 port 2001:db8:20::252/64 vni 20 02:00:20:00:02:fe 10.0.0.2
router tenant1 route 172.16.1.0/24 10.0.0.1
router tenant1 route 172.16.2.0/24 192.168.10.21
router tenant1 route 172.16.3.0/24 10.0.0.3
router tenant1 route 192.168.10.0/24
router tenant1 route 192.168.10.11/32 10.0.0.1
router tenant1 route 192.168.10.12/32 10.0.0.1
router tenant1 route 192.168.10.31/32 10.0.0.3
router tenant1 route 192.168.10.32/32 10.0.0.3
router tenant1 route 192.168.10.251/32 10.0.0.1
router tenant1 route 192.168.10.253/32 10.0.0.3
router tenant1 route 192.168.20.0/24
router tenant1 route 192.168.20.11/32 10.0.0.1
router tenant1 route 192.168.20.12/32 10.0.0.1
router tenant1 route 192.168.20.13/32 10.0.0.1
router tenant1 route 192.168.20.31/32 10.0.0.3
router tenant1 route 192.168.20.32/32 10.0.0.3
router tenant1 route 192.168.20.33/32 10.0.0.3
router tenant1 route 192.168.20.251/32 10.0.0.1
router tenant1 route 192.168.20.253/32 10.0.0.3
router tenant1 route 198.51.100.32/27 10.0.0.1
router tenant1 route 198.51.100.64/27
router tenant1 route 198.51.100.96/27 10.0.0.3
router tenant1 route 203.0.113.0/24
router tenant1 route 2001:db8:1::/48 10.0.0.1
router tenant1 route 2001:db8:2::/48
router tenant1 route 2001:db8:3::/48 10.0.0.3
router tenant1 route 2001:db8:10::/64
router tenant1 route 2001:db8:10::11/128 10.0.0.1
router tenant1 route 2001:db8:10::12/128 10.0.0.1
router tenant1 route 2001:db8:10::31/128 10.0.0.3
router tenant1 route 2001:db8:10::32/128 10.0.0.3
router tenant1 route 2001:db8:10::251/128 10.0.0.1
router tenant1 route 2001:db8:10::253/128 10.0.0.3
router tenant1 route 2001:db8:20::/64
router tenant1 route 2001:db8:20::11/128 10.0.0.1
router tenant1 route 2001:db8:20::12/128 10.0.0.1
router tenant1 route 2001:db8:20::13/128 10.0.0.1
router tenant1 route 2001:db8:20::31/128 10.0.0.3
router tenant1 route 2001:db8:20::32/128 10.0.0.3
router tenant1 route 2001:db8:20::33/128 10.0.0.3
router tenant1 route 2001:db8:20::251/128 10.0.0.1
router tenant1 route 2001:db8:20::253/128 10.0.0.3
router tenant1 route 2001:db8:ffff::/48
router tenant1 route fe80::/64
router tenant2 route 10.2.1.1/32 10.0.0.1
router tenant2 route 10.2.2.1/32
router tenant2 route 10.2.3.1/32 10.0.0.3
router tenant2 route 2001:db8:2:1::1/128 10.0.0.1
router tenant2 route 2001:db8:2:2::1/128
router tenant2 route 2001:db8:2:3::1/128 10.0.0.3
router tenant2 route fe80::/64
)");
}

} // namespace vxshow::test
