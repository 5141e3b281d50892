#pragma once

#include "vxshow/sources/DeadlineWatch.h"
#include "vxshow/sources/frr/Documents.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vxshow::sources::frr {

/// Joins what zebra tells in several documents, entry by entry as they come.
class Collector {
public:
    /// The most MAC addresses behind segments that are asked for one by one: a command each.
    static constexpr std::size_t mostSingleMacs = 64;

    struct L2Vni {
        std::string vrf;
        std::string interfaceName; ///< empty: none
        Nolt::IpAddr vtep;         ///< zero: none
        std::vector<Nolt::IpAddr> floods;
    };

    struct L3Vni {
        std::string vrf;
        std::string interfaceName; ///< empty: none
        Nolt::IpAddr vtep;         ///< zero: it is down
    };

    enum class Side { local, remote };

    struct MacRow {
        Vxlan::Vni vni;
        Nolt::EthAddr mac;
        Side side;
        Nolt::IpAddr vtep; ///< of a remote one; zero: it is behind a segment
        Vex::U32 moves;
        std::string_view segment; ///< empty: not told
    };

    Collector(state::Selection const & selection, Deadline const & deadline)
        : selection_(selection), watch_(deadline) {}

    /// To be called for each entry that is read. Throws `TimedOut`.
    void step() { watch_.step(); }

    void l2Vni(Vxlan::Vni vni, L2Vni known) { l2Vnis_[vni] = std::move(known); }

    void l3Vni(Vxlan::Vni vni, L3Vni known) { l3Vnis_[vni] = std::move(known); }

    /// Whether entries of that MAC address in that VNI are taken at all.
    bool takes(Vxlan::Vni vni, Nolt::EthAddr mac) const {
        return selection_.takesVni(vni) && (selection_.mac.isZero() || selection_.mac == mac);
    }

    /// The entry of a MAC address, for the first time.
    void mac(MacRow const & row);

    /// What is said next of that MAC address in that VNI replaces that it is behind a segment:
    /// nothing else is asked about again one by one, so what else was said stays.
    void forgetSegmentedMac(Vxlan::Vni vni, Nolt::EthAddr mac);

    /// What is said next of MAC addresses replaces what was said of any of them.
    void forgetMacs();

    void segment(std::string name, std::vector<Nolt::IpAddr> vteps) {
        segments_[std::move(name)] = std::move(vteps);
    }

    void neighbour(IpBinding const & binding, Side side);

    /// A VRF that has an L3 VNI. One that is down may have been configured for a VRF that is not
    /// there yet, so that it has no interfaces for as long as that lasts.
    void vrf(std::string const & name, bool isDown);

    /// Whether the interface is that of a VNI, so that its addresses are ports.
    bool isOfVni(std::string const & vrf, std::string const & interface) const;

    void interface(std::string const & vrf, std::string const & name, Nolt::EthAddr mac,
                   std::vector<Nolt::IpGenAddrWithMask> const & addresses);

    void route(std::string const & vrf, Nolt::IpGenPrefix const & prefix,
               std::vector<Nolt::IpGenAddr> const & nexthops);

    void leaveOut(std::string what) { findings_.leftOut.add(std::move(what)); }

    /// zebra holds no VNIs because nobody has told it to do EVPN.
    void notInForce();

    /// What the answers so far leave open. Asked once.
    std::vector<Question> further() const;

    /// What has been joined, settled. The join is over.
    Answer finished(VtepSource const & source);

private:
    using MacKey = std::pair<Vxlan::Vni, Nolt::EthAddr>;

    struct Segmented {
        MacKey key;
        std::string segment; ///< empty: not told
        Vex::U32 moves;
    };

    struct Interface {
        std::string name;
        Nolt::EthAddr mac;
        std::vector<Nolt::IpGenAddrWithMask> addresses;
    };

    void leaveOutDangling(std::string what);
    void resolveSegments();
    void placeLocal(SideFacts & local);
    void dropUnknownVnis(SideFacts & side);
    void addVnis(SideFacts & local);
    void addPorts(std::string const & vrf, Interface const & interface, RouterFacts & router);
    void addRouters(SwitchFacts & own);

    state::Selection selection_;
    DeadlineWatch watch_;
    SideFacts local_; ///< its MAC addresses are at no VTEP yet
    SideFacts remote_;
    std::map<Vxlan::Vni, L2Vni> l2Vnis_;
    std::map<Vxlan::Vni, L3Vni> l3Vnis_;
    std::vector<Segmented> segmented_;
    std::map<std::string, std::vector<Nolt::IpAddr>, std::less<>> segments_;
    std::map<std::string, bool> vrfs_;                         ///< and whether the L3 VNI is down
    std::map<std::string, std::vector<Interface>> interfaces_; ///< by VRF
    std::map<std::string, RouterFacts> routers_;
    Findings findings_;
    bool fits_ = true;
};

} // namespace vxshow::sources::frr
