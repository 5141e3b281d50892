#include "state/PublishStatus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using Controller::MountDesc;
using Controller::SystemId;
using Nolt::EthAddr;
using Statestore::PublishStatus;
using Statestore::SystemPublishedMount;

namespace {

SystemId id(char const * text) {
    return SystemId(EthAddr::fromString(text));
}

} // namespace

TEST(PublishStatus, FindsASystemByTheBytesOfItsAddress) {
    auto const status = Vex::makePtr<PublishStatus>();
    auto const system = status->systemIs(id("0a:00:00:00:00:01"));
    EXPECT_EQ(status->systemIs(id("0A-00-00-00-00-01")), system);
    EXPECT_EQ(status->system(id("0a00.0000.0001")), system);
    EXPECT_EQ(status->system(id("0a:00:00:00:00:02")), nullptr);
    EXPECT_EQ(status->system(SystemId()), nullptr);
    EXPECT_EQ(system->systemId().address(), EthAddr::fromString("0a:00:00:00:00:01"));
}

TEST(PublishStatus, ASystemIdIsOrderedByTheBytesOfItsAddress) {
    EXPECT_LT(SystemId(), id("00:00:00:00:00:01"));
    EXPECT_LT(id("00:ff:00:00:00:00"), id("01:00:00:00:00:00"));
    EXPECT_EQ(id("0a:00:00:00:00:01"), id("0A-00-00-00-00-01"));
}

TEST(PublishStatus, APathHoldsTheLastMountStored) {
    auto const system = Vex::makePtr<SystemPublishedMount>(SystemId());
    system->publishedMountIs(MountDesc("a/b", "Vxlan"));
    system->publishedMountIs(MountDesc("a/c", "Vxlan"));
    system->publishedMountIs(MountDesc("a/b", "Bridging"));
    EXPECT_EQ(system->publishedMount().size(), 2U);
    auto const & mount = system->publishedMount().find("a/b")->element();
    EXPECT_EQ(mount.path(), "a/b");
    EXPECT_EQ(mount.kind(), "Bridging");
    EXPECT_FALSE(system->publishedMount().has("a"));
}

TEST(PublishStatus, TheOrderOfPathsDependsOnlyOnTheContent) {
    std::vector<std::string> paths;
    paths.reserve(50);
    for (int i = 0; i < 50; ++i) {
        paths.push_back("a/" + std::to_string(i));
    }
    auto const walked = [&] {
        auto const system = Vex::makePtr<SystemPublishedMount>(SystemId());
        for (std::string const & path : paths) {
            system->publishedMountIs(MountDesc(path, "Vxlan"));
        }
        std::string text;
        for (MountDesc const & mount : system->publishedMount()) {
            text += mount.path() + " ";
        }
        return text;
    };
    std::string const expected = walked();
    EXPECT_EQ(std::count(expected.begin(), expected.end(), ' '), 50);
    std::reverse(paths.begin(), paths.end());
    EXPECT_EQ(walked(), expected);
}

TEST(PublishStatus, IsAnEntityTrackedUnderItsName) {
    auto const before = Vex::allocTrackLiveCount("Statestore::");
    Vex::Ptr<Vex::Entity const> const entity = [] {
        auto status = Vex::makePtr<PublishStatus>();
        status->systemIs(SystemId());
        return status;
    }();
    EXPECT_EQ(Vex::allocTrackLiveCount("Statestore::"), before + 2);
    EXPECT_NE(Vex::dynamicPtr<PublishStatus const>(entity), nullptr);
}
