#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

std::string withMember(std::string_view name, std::string_view value) {
    std::string text = R"({"format":"vxlan-controller-state","version":1,")";
    return text.append(name).append("\":").append(value).append("}");
}

} // namespace

Mount mounted(std::string_view text) {
    TextFile const file(text);
    return readSnapshot(file.path());
}

std::string refusal(std::string_view text) {
    TextFile const file(text);
    try {
        readSnapshot(file.path());
    } catch (SnapshotError const & error) {
        std::string_view const line(error.what());
        auto const start = file.path() + ":";
        return std::string(line.starts_with(start) ? line.substr(start.size()) : line);
    }
    return "accepted";
}

std::string withReceived(std::string_view received) {
    return withMember("received", received);
}

std::string withAdvertised(std::string_view advertised) {
    return withMember("advertised", advertised);
}

std::string withRouters(std::string_view routers) {
    return withMember("routers", routers);
}

std::string withTables(std::string_view tables) {
    return withReceived(R"({"switches":{"leaf1":{"10":)" + std::string(tables) + "}}}");
}

std::string refusalBehind(std::string_view path, std::string_view text) {
    auto const line = refusal(text);
    auto const at = line.find(path);
    return at == std::string::npos ? line : line.substr(at + path.size());
}

std::string tablesRefusal(std::string_view tables) {
    auto const received = refusalBehind("received.switches.leaf1.\"10\"", withTables(tables));
    auto const entry = withAdvertised(R"({"vnis":{"10":)" + std::string(tables) + "}}");
    EXPECT_EQ(refusalBehind("advertised.vnis.\"10\"", entry), received);
    return received;
}

Vex::Ptr<VxlanController::VniStatusV2 const> mountedTables(std::string_view tables) {
    return switchOf(mounted(withTables(tables)), "leaf1")->vniStatusV2(Vxlan::Vni(10));
}

Vex::Ptr<VxlanController::VniFdbStatusV2 const> entryOf(Mount const & mount,
                                                        std::string_view name) {
    return Vex::dynamicPtr<VxlanController::VniFdbStatusV2 const>(
        mount.advertised.vnis->entityPtr(Vex::Name(name)));
}

Vex::Ptr<VxlanController::VniStatusDirV2 const> switchOf(Mount const & mount,
                                                         std::string_view name) {
    return Vex::dynamicPtr<VxlanController::VniStatusDirV2 const>(
        mount.received.switches->entityPtr(Vex::Name(name)));
}

} // namespace vxshow::test
