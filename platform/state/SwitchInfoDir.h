#pragma once

#include "Nolt/IpGenAddr.h"
#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/HashMap.h"
#include "Vex/Slot.h"
#include "Vex/String.h"
#include "state/VtepKeyPairs.h"

/// Which switch has which VTEPs, and which VTEP represents which switches.
namespace [[gnu::visibility("default")]] VxlanController {

/// One VTEP address and the switches that have it.
class VtepMap : public Vex::Tracked<VtepMap, Vex::PtrInterface> {
public:
    static constexpr char const * vexTypeName = "VxlanController::VtepMap";
    using SwitchIds = Vex::HashMap2018<Vex::SetSlot<SwitchIdVtepKeyPair>>;

    explicit VtepMap(Nolt::IpGenAddr const & address) noexcept : address_(address) {}

    Nolt::IpGenAddr const & address() const noexcept { return address_; }

    /// Whether the VTEP is in service; an active VTEP represents its switch.
    bool active() const noexcept { return active_; }

    void activeIs(bool active) noexcept { active_ = active; }

    /// The switches that have this VTEP, in hash order.
    SwitchIds const & switchId() const noexcept { return switchId_; }

    void switchIdIs(SwitchIdVtepKeyPair key) {
        switchId_.upsert(SwitchIds::Slot(std::move(key), true));
    }

private:
    Nolt::IpGenAddr address_;
    bool active_ = false;
    SwitchIds switchId_;
};

/// One switch and its VTEPs.
class SwitchInfo : public Vex::Tracked<SwitchInfo, Vex::PtrInterface> {
public:
    static constexpr char const * vexTypeName = "VxlanController::SwitchInfo";
    using VtepMaps = Vex::HashMap2018<Vex::PtrSlot<IpVtepKeyPair, VtepMap>>;

    explicit SwitchInfo(Vex::String switchId) : switchId_(std::move(switchId)) {}

    /// The text form of the switch's system identifier.
    Vex::String const & switchId() const noexcept { return switchId_; }

    /// The switch's VTEPs, in hash order, which is another one in each process.
    VtepMaps const & vtepMap() const noexcept { return vtepMap_; }

    void vtepMapIs(IpVtepKeyPair key, Vex::Ptr<VtepMap const> vtep) {
        vtepMap_.upsert(VtepMaps::Slot(std::move(key), std::move(vtep)));
    }

private:
    Vex::String switchId_;
    VtepMaps vtepMap_;
};

/// All switches by identifier, and all VTEPs by address.
class SwitchInfoDir : public Vex::Tracked<SwitchInfoDir, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "VxlanController::SwitchInfoDir";
    using SwitchInfos =
        Vex::HashMap2018<Vex::EntitySlot<Vex::String, SwitchInfo, &SwitchInfo::switchId>>;
    using Vteps = Vex::HashMap2018<Vex::EntitySlot<Nolt::IpGenAddr, VtepMap, &VtepMap::address>>;

    SwitchInfoDir() = default;

    /// All switches, in hash order.
    SwitchInfos const & switchInfo() const noexcept { return switchInfo_; }

    /// All VTEPs in hash order, including those without a switch.
    Vteps const & vtepMap() const noexcept { return vteps_; }

    /// The switch with this identifier, compared byte by byte, or null.
    Vex::Ptr<SwitchInfo const> switchInfo(Vex::String const & switchId) const;

    /// The VTEP with this address, or null.
    Vex::Ptr<VtepMap const> vtepMap(Nolt::IpGenAddr const & address) const;

    /// The same two for writing; created if they do not exist.
    Vex::Ptr<SwitchInfo> switchInfoIs(Vex::String const & switchId);
    Vex::Ptr<VtepMap> vtepMapIs(Nolt::IpGenAddr const & address);

private:
    SwitchInfos switchInfo_;
    Vteps vteps_;
};

} // namespace VxlanController
