#include "Pelo/CorruptionLog.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace Pelo {
namespace {

class Log : public CorruptionLog {};

TEST(CorruptionLog, CountsReportsWithoutAHandler) {
    Log const log;
    EXPECT_EQ(log.corruptions(), 0U);
    log.handleCorruption("one");
    log.handleCorruption("two");
    EXPECT_EQ(log.corruptions(), 2U);
}

TEST(CorruptionLog, PassesEveryReportToTheHandler) {
    std::vector<std::string> heard;
    Log log;
    log.corruptionHandlerIs([&](std::string_view message) { heard.emplace_back(message); });
    Log const & constant = log;
    constant.handleCorruption("one");
    constant.handleCorruption("two");
    EXPECT_EQ(heard, (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(log.corruptions(), 2U);
}

TEST(CorruptionLog, CountsAReportWhoseHandlerRaises) {
    Log log;
    log.corruptionHandlerIs([](std::string_view) { throw std::runtime_error("no"); });
    EXPECT_THROW(log.handleCorruption("one"), std::runtime_error);
    EXPECT_EQ(log.corruptions(), 1U);
}

} // namespace
} // namespace Pelo
