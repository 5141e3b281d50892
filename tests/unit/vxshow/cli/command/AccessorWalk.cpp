#include "tests/unit/vxshow/cli/command/AccessorWalk.h"

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/LRIpPortV2.h"
#include "vxshow/state/snapshot/Snapshot.h"

#include <map>
#include <type_traits>

namespace {

namespace Cli = VxlanController::Cli;

template <class Key>
std::string keyText(Key const & key) {
    if constexpr (std::is_convertible_v<Key, std::string>) {
        return key;
    } else {
        return key.stringValue();
    }
}

class AccessorWalk {
public:
    void root(Cli::VcsVniReceived const & command);
    void root(Cli::VcsVniAdvertised const & command);
    void root(Cli::VcsLRMap const & command);
    void root(Cli::VcsLR const & command);
    void root(Cli::VcsLRRoute const & command);

    std::string const & text() const { return text_; }

private:
    template <class Show>
    void inside(Show && show);

    void line(std::string const & words);
    void value(std::string const & attribute, std::string const & text);
    void flag(std::string const & attribute, bool isSet);
    void outside(std::string const & attribute, bool isThere);

    template <class T>
    void entity(std::string const & start, std::string const & type, T const * object);
    template <class Map, class Show>
    void collection(std::string const & attribute, Map const & map, Show && show);
    template <class Map>
    void entities(std::string const & attribute, std::string const & type, Map const & map);
    template <class Map>
    void values(std::string const & attribute, std::string const & type, Map const & map);
    template <class Map>
    void set(std::string const & attribute, Map const & map);

    void attributes(Cli::VcsVniReceived const & command);
    void attributes(Cli::VcsVniAdvertised const & command);
    void attributes(Cli::VniStatusDirList const & list);
    void attributes(Cli::HostFloodTableList const & list);
    void attributes(Cli::HostFloodTable const & tables);
    void attributes(Cli::VtepList const & list);
    void attributes(Cli::SwitchDir const & dir);
    void attributes(Cli::Switch const & source);
    void attributes(Cli::VniStatusList const & list);
    void attributes(Cli::VniStatus const & status);
    void attributes(Cli::MacVtep const & entry);
    void attributes(Cli::MacVtepMultiPath const & entry);
    void attributes(Cli::MacVtepFloodList const & entry);
    void attributesOfBase(Cli::LRMapBase const & command);
    void attributes(Cli::VcsLRMap const & command);
    void attributes(Cli::VcsLR const & command);
    void attributes(Cli::VcsLRRoute const & command);
    void attributes(Cli::SwitchMap const & map);
    void attributes(Cli::LRMap const & map);
    void attributes(Cli::LRDetail const & detail);
    void attributes(Cli::LRIpUplinkPortAddress const & address);
    void attributes(Cli::LRRouteByName const & routes);
    void attributes(Cli::LRRoute const & route);

    std::string text_;
    std::string margin_;
    std::map<Vex::PtrInterface const *, std::size_t> numbers_;
};

template <class Show>
void AccessorWalk::inside(Show && show) {
    margin_ += "  ";
    show();
    margin_.resize(margin_.size() - 2);
}

void AccessorWalk::line(std::string const & words) {
    text_ += margin_ + words + "\n";
}

void AccessorWalk::value(std::string const & attribute, std::string const & text) {
    line(attribute + " =" + (text.empty() ? "" : " ") + text);
}

void AccessorWalk::flag(std::string const & attribute, bool isSet) {
    value(attribute, isSet ? "True" : "False");
}

void AccessorWalk::outside(std::string const & attribute, bool isThere) {
    value(attribute, isThere ? "(not part of the model)" : "null");
}

template <class T>
void AccessorWalk::entity(std::string const & start, std::string const & type, T const * object) {
    if (!object) {
        return line(start + "null");
    }
    auto const [known, isNew] = numbers_.try_emplace(object, numbers_.size() + 1);
    auto const number = std::to_string(known->second);
    if (!isNew) {
        return line(start + "see #" + number);
    }
    line(start + "VxlanController::Cli::" + type + " #" + number);
    inside([&] { attributes(*object); });
}

template <class Map, class Show>
void AccessorWalk::collection(std::string const & attribute, Map const & map, Show && show) {
    value(attribute, std::to_string(map.size()) + (map.size() == 1 ? " entry" : " entries"));
    inside([&] {
        for (auto at = map.begin(); at; ++at) {
            show("[" + keyText(at.key()) + "] = ", at);
        }
    });
}

template <class Map>
void AccessorWalk::entities(std::string const & attribute, std::string const & type,
                            Map const & map) {
    collection(attribute + " : VxlanController::Cli::" + type, map,
               [&](std::string const & start, auto const & at) {
                   entity(start, type.substr(0, type.find('[')), &*at);
               });
}

template <class Map>
void AccessorWalk::values(std::string const & attribute, std::string const & type,
                          Map const & map) {
    collection(attribute + " : VxlanController::Cli::" + type, map,
               [&](std::string const & start, auto const & at) {
                   line(start + "VxlanController::Cli::" + type.substr(0, type.find('[')));
                   inside([&] { attributes(*at); });
               });
}

template <class Map>
void AccessorWalk::set(std::string const & attribute, Map const & map) {
    collection(attribute, map,
               [&](std::string const & start, auto const &) { line(start + "True"); });
}

void AccessorWalk::root(Cli::VcsVniReceived const & command) {
    entity("", "VcsVniReceived", &command);
}

void AccessorWalk::root(Cli::VcsVniAdvertised const & command) {
    entity("", "VcsVniAdvertised", &command);
}

void AccessorWalk::root(Cli::VcsLRMap const & command) {
    entity("", "VcsLRMap", &command);
}

void AccessorWalk::root(Cli::VcsLR const & command) {
    entity("", "VcsLR", &command);
}

void AccessorWalk::root(Cli::VcsLRRoute const & command) {
    entity("", "VcsLRRoute", &command);
}

void AccessorWalk::attributes(Cli::VcsVniReceived const & command) {
    outside("switchAggregate : Vex::Dir", command.switchAggregate() != nullptr);
    entity("nonSwitchAggregate : VxlanController::Cli::VniStatusDirList = ", "VniStatusDirList",
           command.nonSwitchAggregate().ptr());
    entity("nonSwitchHostFloodTables : VxlanController::Cli::HostFloodTableList = ",
           "HostFloodTableList", command.nonSwitchHostFloodTables().ptr());
    flag("vniDotted : bool", command.vniDotted());
    value("vniFilter : Vxlan::VniOrNone", command.vniFilter().stringValue());
    value("macFilter : Nolt::EthAddr", command.macFilter().stringValue());
    value("switchFilter : Vex::String", command.switchFilter());
    entity("vtepFilter : VxlanController::Cli::VtepList = ", "VtepList",
           command.vtepFilter().ptr());
    entity("switchDir : VxlanController::Cli::SwitchDir = ", "SwitchDir",
           command.switchDir().ptr());
    entity("nonSwitchSourceDir : VxlanController::Cli::SwitchDir = ", "SwitchDir",
           command.nonSwitchSourceDir().ptr());
}

void AccessorWalk::attributes(Cli::VcsVniAdvertised const & command) {
    outside("vniStatusDir : Vex::Dir", command.vniStatusDir() != nullptr);
    entity("nonSwitchAggregate : VxlanController::Cli::VniStatusDirList = ", "VniStatusDirList",
           command.nonSwitchAggregate().ptr());
    entity("nonSwitchHostFloodTables : VxlanController::Cli::HostFloodTableList = ",
           "HostFloodTableList", command.nonSwitchHostFloodTables().ptr());
    flag("vniDotted : bool", command.vniDotted());
    value("vniFilter : Vxlan::VniOrNone", command.vniFilter().stringValue());
    value("macFilter : Nolt::EthAddr", command.macFilter().stringValue());
    value("destFilter : Vex::String", command.destFilter());
    entity("vtepFilter : VxlanController::Cli::VtepList = ", "VtepList",
           command.vtepFilter().ptr());
    entity("vniDir : VxlanController::Cli::VniStatusList = ", "VniStatusList",
           command.vniDir().ptr());
}

void AccessorWalk::attributes(Cli::VniStatusDirList const & list) {
    collection("vniStatusDir : VxlanController::VniStatusDirV2[Vex::Name]", list.vniStatusDir(),
               [&](std::string const & start, auto const & at) {
                   line(start + (at.slot().element() ? "(not part of the model)" : "null"));
               });
}

void AccessorWalk::attributes(Cli::HostFloodTableList const & list) {
    entities("hostFloodTable", "HostFloodTable[Vex::Name]", list.hostFloodTable());
}

void AccessorWalk::attributes(Cli::HostFloodTable const & tables) {
    outside("hostTable : VcsEvpn::HostTable", tables.hostTable() != nullptr);
    outside("floodTable : VcsEvpn::FloodTable", tables.floodTable() != nullptr);
}

void AccessorWalk::attributes(Cli::VtepList const & list) {
    set("vtep : bool[Nolt::IpAddr]", list.vtep());
}

void AccessorWalk::attributes(Cli::SwitchDir const & dir) {
    entities("switchList", "Switch[Vex::Name]", dir.switchList());
}

void AccessorWalk::attributes(Cli::Switch const & source) {
    value("switchId : Vex::Name", source.switchId().stringValue());
    entity("vniStatusList : VxlanController::Cli::VniStatusList = ", "VniStatusList",
           source.vniStatusList().ptr());
}

void AccessorWalk::attributes(Cli::VniStatusList const & list) {
    entities("vniEntry", "VniStatus[Vxlan::Vni]", list.vniEntry());
}

void AccessorWalk::attributes(Cli::VniStatus const & status) {
    value("vni : Vxlan::Vni", status.vni().stringValue());
    value("macAddress : Nolt::EthAddr", status.macAddress().stringValue());
    values("macVtepTable", "MacVtep[Nolt::EthAddr]", status.macVtepTable());
    values("macVtepMultiPathTable", "MacVtepMultiPath[Nolt::EthAddr]",
           status.macVtepMultiPathTable());
    entities("macVtepFloodListTable", "MacVtepFloodList[Nolt::EthAddr]",
             status.macVtepFloodListTable());
}

void AccessorWalk::attributes(Cli::MacVtep const & entry) {
    value("macAddr : Nolt::EthAddr", entry.macAddr().stringValue());
    value("vtepIp : Nolt::IpAddr", entry.vtepIp().stringValue());
    value("moveCount : Quay::Seqno32", entry.moveCount().stringValue());
}

void AccessorWalk::attributes(Cli::MacVtepMultiPath const & entry) {
    value("macAddr : Nolt::EthAddr", entry.macAddr().stringValue());
    set("vtepIpList : bool[Nolt::IpAddr]", entry.vtepIpList());
}

void AccessorWalk::attributes(Cli::MacVtepFloodList const & entry) {
    value("macAddr : Nolt::EthAddr", entry.macAddr().stringValue());
    set("vtepIpFloodList : bool[Nolt::IpAddr]", entry.vtepIpFloodList());
}

void AccessorWalk::attributesOfBase(Cli::LRMapBase const & command) {
    outside("switchPublishStatus : Statestore::PublishStatus",
            command.switchPublishStatus() != nullptr);
    outside("switchInfoDir : VxlanController::SwitchInfoDir", command.switchInfoDir() != nullptr);
    value("pathPrefix : Vex::String", command.pathPrefix());
    entities("switchMap", "SwitchMap[Vex::String]", command.switchMap());
    entities("lRMap", "LRMap[Vex::String]", command.lRMap());
}

void AccessorWalk::attributes(Cli::VcsLRMap const & command) {
    attributesOfBase(command);
    value("lRNameFilter : Vex::String", command.lRNameFilter());
    value("switchFilter : Vex::String", command.switchFilter());
    entity("vtepFilter : VxlanController::Cli::VtepList = ", "VtepList",
           command.vtepFilter().ptr());
}

void AccessorWalk::attributes(Cli::VcsLR const & command) {
    attributesOfBase(command);
    outside("lRStatusDir : Vex::Dir", command.lRStatusDir() != nullptr);
    flag("vniDotted : bool", command.vniDotted());
    value("lRNameFilter : Vex::String", command.lRNameFilter());
    entities("lRDetail", "LRDetail[Vex::String]", command.lRDetail());
}

void AccessorWalk::attributes(Cli::VcsLRRoute const & command) {
    outside("lRStatusDir : Vex::Dir", command.lRStatusDir() != nullptr);
    value("lRNameFilter : Vex::String", command.lRNameFilter());
    value("prefixFilter : Nolt::IpGenPrefix", command.prefixFilter().stringValue());
    entities("lRRouteByName", "LRRouteByName[Vex::String]", command.lRRouteByName());
}

void AccessorWalk::attributes(Cli::SwitchMap const & map) {
    value("switchId : Vex::String", map.switchId());
    value("vtepAddr : Nolt::IpGenAddr", map.vtepAddr().stringValue());
}

void AccessorWalk::attributes(Cli::LRMap const & map) {
    value("lRName : Vex::String", map.lRName());
    entities("switchList", "SwitchMap[Vex::String]", map.switchList());
}

void AccessorWalk::attributes(Cli::LRDetail const & detail) {
    value("lRName : Vex::String", detail.lRName());
    collection("ipPort : VxlanController::LRIpPortV2[Nolt::IpGenAddrWithMask]", detail.ipPort(),
               [&](std::string const & start, auto const & at) {
                   line(start + "Value('VxlanController::LRIpPortV2', ** {'ip': " +
                        at->ip().stringValue() + ", 'vni': " + at->vni().stringValue() +
                        ", 'mac': " + at->mac().stringValue() +
                        ", 'vtep': " + at->vtep().stringValue() + "})");
               });
    values("ipUplinkPort", "LRIpUplinkPortAddress[Nolt::IpGenAddrWithMask]", detail.ipUplinkPort());
}

void AccessorWalk::attributes(Cli::LRIpUplinkPortAddress const & address) {
    value("ip : Nolt::IpGenAddrWithMask", address.ip().stringValue());
    value("vlanId : Bridging::VlanIdOrNone", address.vlanId().stringValue());
    value("mac : Nolt::EthAddr", address.mac().stringValue());
    set("port : bool[Vex::String]", address.port());
    value("switchId : Vex::String", address.switchId());
    value("vtep : Nolt::IpGenAddr", address.vtep().stringValue());
}

void AccessorWalk::attributes(Cli::LRRouteByName const & routes) {
    value("lRName : Vex::String", routes.lRName());
    entities("lRRoute", "LRRoute[Nolt::IpGenPrefix]", routes.lRRoute());
}

void AccessorWalk::attributes(Cli::LRRoute const & route) {
    value("prefix : Nolt::IpGenPrefix", route.prefix().stringValue());
    set("nexthop : bool[Nolt::IpGenAddr]", route.nexthop());
}

/// The collected model of a command, from its root.
template <class Command>
std::string walked(Command const & command) {
    AccessorWalk walk;
    walk.root(*command);
    return walk.text();
}

vxshow::state::Mount mounted(std::string const & path) {
    return vxshow::state::snapshot::readSnapshot(path);
}

} // namespace

std::string macReceivedByAccessors(std::string const & path, std::string const & vni,
                                   std::string const & source,
                                   std::vector<std::string> const & vteps) {
    auto list = Cli::vtepListFactory();
    for (std::string const & vtep : vteps) {
        list->vtepIs(Nolt::IpAddr::fromString(vtep), true);
    }
    auto const state = mounted(path).received;
    auto const command =
        Cli::vcsVniReceivedFactory(state.switches, state.sources, state.evpn, false,
                                   Vxlan::VniOrNone::fromString(vni), {}, source, list);
    command->initialize();
    return walked(command);
}

std::string macAdvertisedByAccessors(std::string const & path) {
    auto const state = mounted(path).advertised;
    auto const command = Cli::vcsVniAdvertisedFactory(state.vnis, state.sources, state.evpn, false,
                                                      {}, {}, "", Cli::vtepListFactory());
    command->initialize();
    return walked(command);
}

std::string routerMapByAccessors(std::string const & path) {
    auto const state = mounted(path).routers;
    auto const command = Cli::vcsLRMapFactory(state.publishStatus, state.switchInfoDir, "", "",
                                              Cli::vtepListFactory());
    command->buildLRMap("", "", nullptr);
    return walked(command);
}

std::string routerDetailByAccessors(std::string const & path) {
    auto const state = mounted(path).routers;
    auto const command =
        Cli::vcsLRFactory(state.publishStatus, state.switchInfoDir, state.lRStatusDir, false, "");
    command->initialize();
    return walked(command);
}

std::string routerRoutesByAccessors(std::string const & path) {
    auto const command = Cli::vcsLRRouteFactory(mounted(path).routers.lRStatusDir, "", {});
    command->initialize();
    return walked(command);
}
