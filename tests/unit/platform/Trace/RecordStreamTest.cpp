#include "Trace/RecordStream.h"

#include "Captured.h"
#include "Vex/Name.h"
#include "Vex/String.h"

#include <gtest/gtest.h>
#include <locale>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Trace::test {
namespace {

static_assert(!std::is_copy_constructible_v<RecordStream>);

int lineOfTheTrace = 0;

void copySwitch(Handle const & handle, std::string_view name) {
    lineOfTheTrace = __LINE__ + 1;
    if (auto record = handle.at(8)) {
        record << "copySwitch"
               << " switchId " << name;
    }
}

TEST(RecordStream, DeliversTextLevelAndPlace) {
    LevelsOff clean;
    Captured captured;
    Handle handle("VxlanControllerCli");
    handle.enable(8, true);
    copySwitch(handle, "leaf1");
    ASSERT_EQ(captured.records().size(), 1U);
    Delivered const & record = captured.records()[0];
    EXPECT_EQ(record.handle, "VxlanControllerCli");
    EXPECT_EQ(record.level, 8U);
    EXPECT_TRUE(record.file.ends_with("RecordStreamTest.cpp")) << record.file;
    EXPECT_EQ(record.line, lineOfTheTrace);
    EXPECT_EQ(record.function, "copySwitch");
    EXPECT_EQ(record.text, "copySwitch switchId leaf1");
}

TEST(RecordStream, IsEmptyWhenItsLevelIsOff) {
    LevelsOff clean;
    Captured captured;
    Handle handle("test");
    handle.enableUpTo(7);
    bool evaluated = false;
    if (auto record = handle.at(8)) {
        evaluated = true;
    }
    EXPECT_FALSE(evaluated);
    EXPECT_FALSE(static_cast<bool>(handle.at(8) << "text"));
    EXPECT_FALSE(static_cast<bool>(handle.at(10)));
    EXPECT_TRUE(captured.records().empty());
}

TEST(RecordStream, IsDeliveredOnceWhenItIsDestroyed) {
    LevelsOff clean;
    Captured captured;
    Handle handle("test");
    handle.enableUpTo(1);
    {
        RecordStream first = handle.at(1);
        first << "a";
        RecordStream moved = std::move(first);
        moved << "b";
        EXPECT_TRUE(captured.records().empty());
    }
    ASSERT_EQ(captured.records().size(), 1U);
    EXPECT_EQ(captured.records()[0].text, "ab");
}

TEST(RecordStream, AcceptsEverythingAStreamAccepts) {
    LevelsOff clean;
    Captured captured;
    Handle handle("test");
    handle.enableUpTo(1);
    handle.at(1) << "a " << std::string_view("b\0c", 3) << Vex::String(" d ") << 'e' << -12 << true;
    handle.at(0) << "";
    ASSERT_EQ(captured.records().size(), 2U);
    EXPECT_EQ(captured.records()[0].text, std::string("a b\0c d e-121", 13));
    EXPECT_EQ(captured.records()[1].text, "");
}

struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }

    std::string do_grouping() const override { return "\3"; }
};

TEST(RecordStream, WritesNumbersTheSameInEveryLocale) {
    LevelsOff clean;
    Captured captured;
    Handle handle("test");
    handle.enableUpTo(1);
    std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
    handle.at(1) << 16777215;
    std::locale::global(before);
    ASSERT_EQ(captured.records().size(), 1U);
    EXPECT_EQ(captured.records()[0].text, "16777215");
}

TEST(RecordStream, IsDroppedWithoutASink) {
    LevelsOff clean;
    Handle handle("test");
    handle.enableUpTo(1);
    { Captured captured; }
    handle.at(1) << "nobody listens";
}

TEST(RecordStream, SurvivesASinkThatThrows) {
    LevelsOff clean;
    Handle handle("test");
    handle.enableUpTo(1);
    int deliveries = 0;
    setSink([&](Record const &) {
        ++deliveries;
        throw std::runtime_error("the log is full");
    });
    handle.at(1) << "lost";
    handle.at(1) << "lost as well";
    setSink(nullptr);
    EXPECT_EQ(deliveries, 2);
}

TEST(RecordStream, IsDroppedWhenTheSinkItselfTraces) {
    LevelsOff clean;
    Handle handle("test");
    handle.enableUpTo(1);
    int deliveries = 0;
    setSink([&](Record const &) {
        ++deliveries;
        handle.at(1) << "about the sink";
    });
    handle.at(1) << "first";
    handle.at(1) << "second";
    setSink(nullptr);
    EXPECT_EQ(deliveries, 2);
}

TEST(RecordStream, IsDeliveredToASinkThatReplacesItself) {
    LevelsOff clean;
    Handle handle("test");
    handle.enableUpTo(1);
    int deliveries = 0;
    setSink([&](Record const &) {
        ++deliveries;
        setSink(nullptr);
    });
    handle.at(1) << "first";
    handle.at(1) << "second";
    EXPECT_EQ(deliveries, 1);
}

} // namespace
} // namespace Trace::test
