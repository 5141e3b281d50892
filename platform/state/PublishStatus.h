#pragma once

#include "Nolt/EthAddr.h"
#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/HashMap.h"
#include "Vex/Slot.h"
#include "Vex/String.h"

/// Which systems publish which paths.
namespace [[gnu::visibility("default")]] Controller {

/// The identity of a system: its own Ethernet address.
class SystemId {
public:
    SystemId() = default;

    explicit SystemId(Nolt::EthAddr const & address) noexcept : address_(address) {}

    Nolt::EthAddr const & address() const noexcept { return address_; }

    auto operator<=>(SystemId const & other) const = default;

private:
    Nolt::EthAddr address_;
};

/// What a system has mounted at one path.
class MountDesc {
public:
    MountDesc(Vex::String path, Vex::String kind)
        : path_(std::move(path)), kind_(std::move(kind)) {}

    Vex::String const & path() const noexcept { return path_; }

    /// The kind of state, "Vxlan" for what the controller reads.
    Vex::String const & kind() const noexcept { return kind_; }

private:
    Vex::String path_;
    Vex::String kind_;
};

} // namespace Controller

template <>
struct std::hash<Controller::SystemId> {
    std::size_t operator()(Controller::SystemId const & id) const noexcept {
        return std::hash<Nolt::EthAddr>()(id.address());
    }
};

namespace [[gnu::visibility("default")]] Statestore {

/// The paths that one system publishes.
class SystemPublishedMount : public Vex::Tracked<SystemPublishedMount, Vex::PtrInterface> {
public:
    static constexpr char const * vexTypeName = "Statestore::SystemPublishedMount";
    using PublishedMounts = Vex::HashMap2018<
        Vex::ValueSlot<Vex::String, Controller::MountDesc, &Controller::MountDesc::path>>;

    explicit SystemPublishedMount(Controller::SystemId const & systemId) : systemId_(systemId) {}

    Controller::SystemId const & systemId() const noexcept { return systemId_; }

    /// The paths, iterated in hash order.
    PublishedMounts const & publishedMount() const noexcept { return publishedMount_; }

    /// Adds a path, or overwrites what is mounted there.
    void publishedMountIs(Controller::MountDesc mount) {
        publishedMount_.upsert(PublishedMounts::Slot(std::move(mount)));
    }

private:
    Controller::SystemId systemId_;
    PublishedMounts publishedMount_;
};

/// The paths that all systems publish.
class PublishStatus : public Vex::Tracked<PublishStatus, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "Statestore::PublishStatus";
    using Systems = Vex::HashMap2018<Vex::EntitySlot<Controller::SystemId, SystemPublishedMount,
                                                     &SystemPublishedMount::systemId>>;

    PublishStatus() = default;

    /// All systems, in hash order.
    Systems const & system() const noexcept { return systems_; }

    /// What `systemId` publishes, or null if nothing is known about it.
    Vex::Ptr<SystemPublishedMount const> system(Controller::SystemId const & systemId) const;

    /// The same for writing; created if it does not exist.
    Vex::Ptr<SystemPublishedMount> systemIs(Controller::SystemId const & systemId);

private:
    Systems systems_;
};

} // namespace Statestore
