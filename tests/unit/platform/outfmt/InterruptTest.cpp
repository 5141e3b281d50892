#include "outfmt/Interrupt.h"

#include "Descriptors.h"

#include <gtest/gtest.h>

namespace outfmt::test {
namespace {

TEST(Interrupt, IsNotRequestedInitially) {
    CleanInterruptFlag clean;
    EXPECT_FALSE(interruptRequested());
    EXPECT_NO_THROW(checkInterrupt());
}

TEST(Interrupt, StaysRequestedUntilItIsCleared) {
    CleanInterruptFlag clean;
    requestInterrupt();
    EXPECT_THROW(checkInterrupt(), SigIntException);
    EXPECT_THROW(checkInterrupt(), SigIntException);
    EXPECT_TRUE(interruptRequested());
    clearInterrupt();
    EXPECT_NO_THROW(checkInterrupt());
}

TEST(Interrupt, CanBeRequestedByASignalHandler) {
    CleanInterruptFlag clean;
    SignalAction action(SIGUSR1, [](int) { requestInterrupt(); });
    ::raise(SIGUSR1);
    EXPECT_THROW(checkInterrupt(), SigIntException);
}

TEST(Interrupt, IsAStandardExceptionWithItsText) {
    try {
        throw SigIntException();
    } catch (std::exception const & exception) {
        EXPECT_STREQ(exception.what(), "on interrupt");
    }
}

} // namespace
} // namespace outfmt::test
