#include "Vex/Reinstantiation.h"
#include "outfmt/Interrupt.h"
#include "outfmt/WriteError.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/arp/ArpState.h"
#include "tests/unit/VxlanController/command/Interrupted.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <functional>
#include <unistd.h>

/// What the two ARP commands have in common: interrupts, failures, and what they leave
/// behind.
namespace {

constexpr char const * entryType = "VxlanController::Cli::VxlanArpEntry";
constexpr char const * tableType = "VxlanController::Cli::VxlanArpTable";

/// A state with one table that takes long to copy.
ArpState oneLargeTable(Vex::U32 entries) {
    ArpState state;
    auto const status = Vex::makePtr<VxlanController::VniFdbStatusV2>();
    addMany(*status, entries);
    state.vnis->entityIs("10", status);
    auto const vnis = Vex::makePtr<VxlanController::VniStatusDirV2>();
    addMany(*vnis->vniStatusV2Is(Vxlan::Vni(10)), entries);
    state.switches->entityIs("leaf1", vnis);
    return state;
}

/// A state with many small tables.
ArpState manyTables(Vex::U32 tables) {
    ArpState state;
    for (Vex::U32 vni = 0; vni < tables; ++vni) {
        state.advertised(std::to_string(vni), {{"10.0.0.1", "02:00:00:00:00:01"}})
            .received("leaf1", vni, {{"10.0.0.1", "02:00:00:00:00:01"}});
    }
    return state;
}

class ArpRender : public testing::Test {
protected:
    ArpRender() { outfmt::clearInterrupt(); }

    ~ArpRender() override { outfmt::clearInterrupt(); }
};

/// Renders `command`, which gets interrupted: it must report that on standard output, return, and
/// print nothing.
template <class CommandPtr>
void expectInterrupted(CommandPtr const & command) {
    testing::internal::CaptureStdout();
    std::string const printed = rendered(command);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "exiting on interrupt\n");
    EXPECT_EQ(printed, "");
    outfmt::clearInterrupt();
}

Vex::U64 liveModelObjects() {
    return Vex::allocTrackLiveCount("VxlanController::Cli::");
}

} // namespace

TEST_F(ArpRender, AnInterruptBeforeCollectionCreatesNoTable) {
    for (ArpState const & state : {ArpState(), manyTables(3)}) {
        InterruptOnCreation const tables(tableType);
        outfmt::requestInterrupt();
        expectInterrupted(advertisedCommand(state));
        outfmt::requestInterrupt();
        expectInterrupted(receivedCommand(state));
        EXPECT_EQ(tables.created(), 0U);
    }
}

TEST_F(ArpRender, AnInterruptWithinATableIsNoticedSoon) {
    ArpState const state = oneLargeTable(100'000);
    {
        InterruptOnCreation const entries(entryType);
        expectInterrupted(advertisedCommand(state));
        EXPECT_LT(entries.created(), 10'000U);
    }
    InterruptOnCreation const entries(entryType);
    expectInterrupted(receivedCommand(state));
    EXPECT_LT(entries.created(), 10'000U);
}

TEST_F(ArpRender, AnInterruptIsNoticedAtTheNextVni) {
    ArpState const state = manyTables(10);
    {
        InterruptOnCreation const tables(tableType);
        expectInterrupted(advertisedCommand(state));
        EXPECT_EQ(tables.created(), 1U);
    }
    InterruptOnCreation const tables(tableType);
    expectInterrupted(receivedCommand(state));
    EXPECT_EQ(tables.created(), 1U);
}

TEST_F(ArpRender, ACommandCanBeRenderedAgainAfterAnInterrupt) {
    ArpState const state = manyTables(3);
    auto const command = advertisedCommand(state);
    std::string const whole = rendered(command);
    outfmt::requestInterrupt();
    expectInterrupted(command);
    EXPECT_EQ(rendered(command), whole);
}

TEST_F(ArpRender, AFullDiskRaisesAWriteError) {
    int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    for (ArpState const & state : {ArpState(), oneLargeTable(20'000)}) {
        for (Vex::U32 format : {textFormat, jsonFormat}) {
            auto const fd = static_cast<Vex::U32>(full);
            EXPECT_THROW(advertisedCommand(state)->render(fd, format, 2), outfmt::WriteError);
            EXPECT_THROW(receivedCommand(state)->render(fd, format, 2), outfmt::WriteError);
        }
    }
    close(full);
}

TEST_F(ArpRender, ADestroyedCommandLeavesNoModelObject) {
    Vex::U64 const before = liveModelObjects();
    ArpState const state = manyTables(20);
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        auto advertised = advertisedCommand(state);
        auto received = receivedCommand(state);
        rendered(advertised, format);
        rendered(received, format);
        EXPECT_EQ(liveModelObjects(), before + 2);
        advertised = nullptr;
        received = nullptr;
        EXPECT_EQ(liveModelObjects(), before);
    }
}

TEST_F(ArpRender, AnInterruptedOrFailedCommandLeavesNoModelObject) {
    Vex::U64 const before = liveModelObjects();
    {
        InterruptOnCreation const entries(entryType);
        expectInterrupted(receivedCommand(oneLargeTable(100'000)));
    }
    EXPECT_EQ(liveModelObjects(), before);
    ArpState state;
    state.advertised("10", {{"10.0.0.1", "02:00:00:00:00:01"}})
        .advertised("010", {{"10.0.0.1", "02:00:00:00:00:02"}});
    EXPECT_THROW(advertisedText(state), Vex::ReinstantiationError);
    EXPECT_EQ(liveModelObjects(), before);
}

TEST_F(ArpRender, TheStateIsReleasedWithTheCommand) {
    ArpState const state = manyTables(2);
    Vex::U32 const before = state.switches->references();
    {
        auto const command = receivedCommand(state);
        rendered(command);
        EXPECT_EQ(state.switches->references(), before + 1);
    }
    EXPECT_EQ(state.switches->references(), before);
}
