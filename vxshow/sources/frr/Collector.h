#pragma once

#include "vxshow/sources/DeadlineWatch.h"
#include "vxshow/sources/FactBudget.h"
#include "vxshow/sources/frr/Documents.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vxshow::sources::frr {

/// Joins the answers of zebra into facts, entry by entry as they are read.
class Collector {
public:
    /// The most MAC addresses behind segments that are asked for one by one, with a command each.
    static constexpr std::size_t mostSingleMacs = 64;

    struct L2Vni {
        std::string vrf;
        std::string interfaceName; ///< empty: none
        std::string device;        ///< the VXLAN device; empty: not known
        Nolt::IpAddr vtep;         ///< zero: none, or not IPv4
        std::string ipv6Vtep;      ///< empty: its VTEP is not IPv6
        std::vector<Nolt::IpAddr> floods;
        bool isIdle = false; ///< without any entry, as when its device is down
    };

    struct L3Vni {
        std::string vrf;
        std::string interfaceName; ///< empty: none
        Nolt::IpAddr vtep;         ///< zero: the VNI is down, or its VTEP is not IPv4
        Nolt::EthAddr routerMac;   ///< zero: none, as when the VNI is down
    };

    enum class Side { local, remote };

    /// The addresses of the VTEPs of an Ethernet segment.
    struct SegmentVteps {
        std::vector<Nolt::IpAddr> ipv4 = {};
        std::vector<std::string> ipv6 = {};

        bool isEmpty() const noexcept { return ipv4.empty() && ipv6.empty(); }
    };

    struct MacRow {
        Vxlan::Vni vni;
        Nolt::EthAddr mac;
        Side side;
        Nolt::IpAddr vtep; ///< of a remote address; zero: it is behind a segment
        Vex::U32 moves;
        std::string_view segment; ///< empty: not known yet
    };

    /// All documents together can come to `maxFacts` facts. What adds facts throws `TooManyFacts`
    /// before it does.
    Collector(state::Selection const & selection, Deadline const & deadline, std::size_t maxFacts)
        : selection_(selection), watch_(deadline), budget_(maxFacts) {}

    /// To be called for each entry that is read. Throws `TimedOut`.
    void step() { watch_.step(); }

    /// To be called before so many bytes are read at once, and after that. Throws `TimedOut`.
    void bytes(std::size_t count) { watch_.bytes(count); }

    void l2Vni(Vxlan::Vni vni, L2Vni known) { l2Vnis_[vni] = std::move(known); }

    void l3Vni(Vxlan::Vni vni, L3Vni known) { l3Vnis_[vni] = std::move(known); }

    /// Whether entries of that MAC address in that VNI are selected.
    bool takes(Vxlan::Vni vni, Nolt::EthAddr mac) const {
        return selection_.vni.matches(vni) && (selection_.mac.isZero() || selection_.mac == mac);
    }

    /// The entry of a MAC address that has none yet.
    void mac(MacRow const & row);

    /// What the entry of a MAC address reports beyond its place.
    void macDetails(state::MacDetails const & details) {
        if (selection_.details && !details.isPlain()) {
            details_.macs.push_back(details);
        }
    }

    void l3VniDetails(state::L3VniDetails details) {
        if (selection_.details) {
            details_.l3Vnis.push_back(std::move(details));
        }
    }

    /// Forgets that the MAC address is behind a segment, since the next document about it is more
    /// precise. Only such addresses are asked about one by one, so everything else stays.
    void forgetSegmentedMac(Vxlan::Vni vni, Nolt::EthAddr mac);

    /// Forgets all MAC addresses, since the next document has all of them.
    void forgetMacs();

    void segment(std::string name, SegmentVteps vteps) {
        segments_[std::move(name)] = std::move(vteps);
    }

    void neighbour(IpBinding const & binding, Side side);

    /// A VRF that has an L3 VNI. An L3 VNI that is down can be configured for a VRF that does not
    /// exist yet: then it has no interfaces.
    void vrf(std::string const & name, bool isDown);

    /// Whether the interface belongs to a VNI, so that its addresses are ports.
    bool isOfVni(std::string const & vrf, std::string const & interface);

    void interface(std::string const & vrf, std::string const & name, Nolt::EthAddr mac,
                   std::vector<Nolt::IpGenAddrWithMask> const & addresses);

    void route(std::string const & vrf, Nolt::IpGenPrefix const & prefix,
               std::vector<Nolt::IpGenAddr> const & nexthops);

    void leaveOut(Subjects about, std::string what) {
        findings_.leftOut.add(about, std::move(what));
    }

    /// An entry that is not shown because its VTEP has an IPv6 address.
    void leaveOutIpv6(Subjects about, std::string what) {
        findings_.ipv6Vteps.add(about, std::move(what));
    }

    /// zebra holds no VNIs because EVPN is not active.
    void evpnIsNotActive() { isEvpnActive_ = false; }

    /// An interface of zebra's machine is a VXLAN device that is up.
    void vxlanDevice(std::string const & name) { vxlanDevices_.insert(name); }

    /// An interface of zebra's machine is down.
    void downDevice(std::string name) { downDevices_.insert(std::move(name)); }

    /// The questions that the answers so far leave open. To be called once.
    std::vector<Question> further() const;

    /// zebra does not report which devices are down: all count as up. `reason` is printable, on one
    /// line.
    void deviceStatesAreUnknown(std::string reason) { deviceComplaint_ = std::move(reason); }

    /// The whole answer. To be called once, after the last document. Throws `TimedOut`.
    Answer finished(VtepSource const & source);

private:
    using MacKey = std::pair<Vxlan::Vni, Nolt::EthAddr>;

    struct Segmented {
        MacKey key;
        std::string segment; ///< empty: not known yet
        Vex::U32 moves;
    };

    struct Interface {
        std::string name;
        Nolt::EthAddr mac;
        std::vector<Nolt::IpGenAddrWithMask> addresses;
    };

    /// The addresses of an interface, as ports in one of its VNIs.
    struct PortsOfVni {
        std::string const * vrf;
        Interface const * interface;
        Vxlan::Vni vni;
        Nolt::IpAddr vtep;
    };

    void checkDeviceStates();
    void requireEvpn() const;
    void leaveOutDangling(Subjects about, std::string what);
    void resolveSegments();
    void placeLocal(SideFacts & local);
    void dropUnknownVnis(SideFacts & side, Subjects macs, Subjects bindings);
    void addVnis(SideFacts & local);
    /// Finds the ports of a VRF that has interfaces, and counts them before any is added.
    void findPorts(std::string const & vrf, std::vector<PortsOfVni> & found);
    void addPorts(PortsOfVni const & ports);
    void addRouters(SwitchFacts & own);
    bool isDown(L2Vni const & vni) const;
    bool isUp(L3Vni const & vni) const;
    /// The lowest address of that kind of the L3 VNIs that are up; nullopt if they have none.
    template <class Address>
    std::optional<Address> lowestOfThoseUp(Address L3Vni::*address) const;
    /// Sets the identifier and the VTEP that the switch has in the map of routers.
    void identify(SwitchFacts & own, VtepSource const & source);

    state::Selection selection_;
    DeadlineWatch watch_;
    FactBudget budget_;
    SideFacts local_; ///< its MAC addresses have no VTEP yet
    SideFacts remote_;
    std::map<Vxlan::Vni, L2Vni> l2Vnis_;
    std::map<Vxlan::Vni, L3Vni> l3Vnis_;
    std::vector<Segmented> segmented_;
    std::map<std::string, SegmentVteps, std::less<>> segments_;
    std::map<std::string, bool> vrfs_;                         ///< whether the L3 VNI is down
    std::map<std::string, std::vector<Interface>> interfaces_; ///< by VRF
    std::map<std::string, RouterFacts> routers_;
    bool isEvpnActive_ = true;
    std::set<std::string> vxlanDevices_; ///< known if zebra has no VNIs
    std::set<std::string> downDevices_;
    std::string deviceComplaint_; ///< empty: they are known
    state::SourceDetails details_;
    Findings findings_;
    bool fits_ = true;
};

} // namespace vxshow::sources::frr
