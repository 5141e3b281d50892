#include "vxshow/listing/WriteRows.h"
#include "tests/unit/vxshow/listing/Hosts.h"

#include "outfmt/Interrupt.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

using namespace listing;

constexpr std::array twoTables{hosts, Table{"others", hostColumns}};

/// What is written of two hosts, and a third one in the second table.
std::string writtenRows(Choice const & choice) {
    auto const plan = std::get<Plan>(planOf(choice, twoTables));
    system::MemoryFile file;
    writeRows(file.descriptor(), plan, twoTables, {}, [](std::size_t table, RowSink & sink) {
        auto const rows = table == 0 ? std::vector{host("a"), host("b")} : std::vector{host("c")};
        walkOver(rows)(sink);
    });
    auto const bytes = file.bytes();
    return std::string(bytes.text());
}

} // namespace

TEST(WriteRows, AnEmptyLineIsBetweenTheTablesOfWide) {
    EXPECT_EQ(writtenRows({.columns = {"name", "vni"}}), "Name  VNI\n"
                                                         "a     10\n"
                                                         "b     10\n"
                                                         "\n"
                                                         "Name  VNI\n"
                                                         "c     10\n");
}

TEST(WriteRows, JsonLinesOfAllTablesFollowEachOther) {
    EXPECT_EQ(writtenRows({.form = Form::jsonLines, .columns = {"name"}}),
              "{\"table\":\"hosts\",\"name\":\"a\"}\n"
              "{\"table\":\"hosts\",\"name\":\"b\"}\n"
              "{\"table\":\"others\",\"name\":\"c\"}\n");
}

TEST(WriteRows, TopLimitsEachTable) {
    EXPECT_EQ(
        writtenRows({.form = Form::jsonLines, .columns = {"name"}, .sort = {"-name"}, .top = 1}),
        "{\"table\":\"hosts\",\"name\":\"b\"}\n"
        "{\"table\":\"others\",\"name\":\"c\"}\n");
}

TEST(WriteRows, TheCountIsARowForEachTable) {
    EXPECT_EQ(writtenRows({.count = true}), "Table   Count\n"
                                            "hosts       2\n"
                                            "others      1\n");
    EXPECT_EQ(writtenRows({.form = Form::jsonLines, .count = true}),
              "{\"table\":\"hosts\",\"count\":2}\n"
              "{\"table\":\"others\",\"count\":1}\n");
}

TEST(WriteRows, TheCountInCsvWithoutAHeaderIsJustTheNumber) {
    EXPECT_EQ(writtenRows({.form = Form::csv, .count = true}), "count\r\n2\r\n");
    EXPECT_EQ(writtenRows({.form = Form::csv, .count = true, .header = false}), "2\r\n");
}

TEST(WriteRows, AnInterruptEndsTheListing) {
    for (Form const form : {Form::wide, Form::csv, Form::jsonLines}) {
        outfmt::requestInterrupt();
        EXPECT_THROW(writtenRows({.form = form}), outfmt::SigIntException);
        outfmt::clearInterrupt();
    }
}

} // namespace vxshow::test
