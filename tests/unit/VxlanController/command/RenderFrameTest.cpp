#include "Trace/Handle.h"
#include "Trace/Sink.h"
#include "outfmt/WriteError.h"
#include "tests/unit/VxlanController/Fabric.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/command/Interrupted.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// A state whose listing is far larger than any buffer on the way.
Fabric largeFabric() {
    Fabric fabric;
    auto const status = fabric.dirOf("leaf1").vniStatusV2Is(Vxlan::Vni(10));
    for (Vex::U32 i = 0; i < 100'000; ++i) {
        Nolt::EthAddr const mac({2, 0, 0, static_cast<Vex::U8>(i >> 16),
                                 static_cast<Vex::U8>(i >> 8), static_cast<Vex::U8>(i)});
        status->macVtepIs(VxlanController::MacVtepV2(mac, Nolt::IpAddr(i + 1), 0));
    }
    return fabric;
}

/// Clears the interrupt flag before and after a test.
class RenderFrame : public testing::Test {
protected:
    RenderFrame() { outfmt::clearInterrupt(); }

    ~RenderFrame() override { outfmt::clearInterrupt(); }
};

} // namespace

TEST_F(RenderFrame, EveryFormatButOneIsJson) {
    auto const command = receivedCommand(Fabric());
    for (Vex::U32 format : {0U, 2U, 4U, 4294967295U}) {
        EXPECT_EQ(rendered(command, format), "{\"switches\":{},\"nonSwitchSources\":{}}\n");
    }
    EXPECT_EQ(rendered(command, 3), "{\n  \"switches\": {},\n  \"nonSwitchSources\": {}\n}\n");
    EXPECT_EQ(rendered(command, 1).substr(0, 36), "         Received Mac Address Table\n");
}

TEST_F(RenderFrame, AnInterruptBeforeCollectionPrintsTheExitingLineAndNoTable) {
    auto const command = receivedCommand(largeFabric());
    OutputFile const file;
    outfmt::requestInterrupt();
    EXPECT_EQ(
        standardOutputOf([&] { command->render(static_cast<Vex::U32>(file.fd()), textFormat, 2); }),
        "exiting on interrupt\n");
    EXPECT_EQ(file.content(), "");
}

TEST_F(RenderFrame, AnInterruptDuringCollectionPrintsTheExitingLineAndNoTable) {
    auto const command = receivedCommand(largeFabric());
    OutputFile const file;
    Trace::enableAllUpTo(8);
    Trace::setSink([](Trace::Record const & record) {
        if (record.text.find("copySwitch") != std::string_view::npos) {
            outfmt::requestInterrupt();
        }
    });
    std::string const standardOutput =
        standardOutputOf([&] { command->render(static_cast<Vex::U32>(file.fd()), textFormat, 2); });
    Trace::setSink({});
    Trace::disableAll();
    EXPECT_EQ(standardOutput, "exiting on interrupt\n");
    EXPECT_EQ(file.content(), "");
    EXPECT_TRUE(command->switchDir()->switchList().empty());
}

TEST_F(RenderFrame, AnInterruptDuringPrintingEndsTheListingAtALineEnd) {
    auto const command = receivedCommand(largeFabric());
    std::string const whole = rendered(command);
    auto const [got, standardOutput] = interruptedWhilePrinting(
        [&](int fd) { command->render(static_cast<Vex::U32>(fd), textFormat, 2); });
    EXPECT_EQ(standardOutput, "exiting on interrupt\n");
    EXPECT_LT(got.size(), whole.size());
    EXPECT_EQ(got, whole.substr(0, got.size()));
    ASSERT_FALSE(got.empty());
    EXPECT_EQ(got.back(), '\n');
}

TEST_F(RenderFrame, ACommandCanBeRenderedAgainAfterAnInterrupt) {
    auto const command = receivedCommand(Fabric());
    std::string const whole = rendered(command);
    outfmt::requestInterrupt();
    standardOutputOf([&] { EXPECT_EQ(rendered(command), ""); });
    outfmt::clearInterrupt();
    EXPECT_EQ(rendered(command), whole);
}

TEST_F(RenderFrame, AFullDiskRaisesAWriteError) {
    int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    for (auto const & fabric : {Fabric(), largeFabric()}) {
        for (Vex::U32 format : {textFormat, jsonFormat}) {
            try {
                receivedCommand(fabric)->render(static_cast<Vex::U32>(full), format, 2);
                ADD_FAILURE() << "nothing was thrown";
            } catch (outfmt::WriteError const & error) {
                EXPECT_EQ(error.code(), ENOSPC);
            }
        }
    }
    close(full);
}

TEST_F(RenderFrame, AClosedPipeRaisesAWriteErrorIfTheSignalIsIgnored) {
    auto const old = std::signal(SIGPIPE, SIG_IGN);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    EXPECT_THROW(receivedCommand(largeFabric())->render(static_cast<Vex::U32>(ends[1]), 1, 2),
                 outfmt::WriteError);
    close(ends[1]);
    std::signal(SIGPIPE, old);
}
