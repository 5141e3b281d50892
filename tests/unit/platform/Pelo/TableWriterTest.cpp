#include "Pelo/TableWriter.h"

#include "Pelo/Errors.h"
#include "Pelo/Table.h"
#include "Vex/Entity.h"
#include "tests/unit/platform/Pelo/TestTables.h"

#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <sys/resource.h>

namespace Pelo::Test {
namespace {

class PairTable : public Vex::Entity, public Table<PairSchema> {
public:
    explicit PairTable(PairReader reader) : Table(std::move(reader)) {}
};

using Entries = std::map<U32, Pair>;

Entries contents(PairTable const & table) {
    Entries entries;
    for (U32 const key : table) {
        entries.emplace(key, table.value(key));
    }
    return entries;
}

TEST(TableWriter, ItsTableShowsEveryChange) {
    TableWriter<PairTable> writer("t");
    Vex::Ptr<PairTable const> const table = writer.table();
    EXPECT_EQ(table->name(), "t");
    EXPECT_TRUE(contents(*table).empty());
    EXPECT_TRUE(writer.insert(1, Pair::of(1)));
    EXPECT_FALSE(writer.insert(1, Pair::of(2)));
    EXPECT_EQ(contents(*table), (Entries{{1, Pair::of(2)}}));
    EXPECT_TRUE(writer.erase(1));
    EXPECT_TRUE(contents(*table).empty());
    EXPECT_EQ(table->value(1), Pair());
}

TEST(TableWriter, ItsTableFollowsAMove) {
    TableWriter<PairTable> writer("t");
    auto const table = writer.table();
    Entries expected;
    for (U32 key = 0; key < 1000; ++key) {
        writer.insert(key, Pair::of(key));
        expected.emplace(key, Pair::of(key));
        ASSERT_EQ(table->size(), key + 1);
    }
    EXPECT_EQ(contents(*table), expected);
    EXPECT_EQ(writer.table(), table);
}

TEST(TableWriter, AWalkInProgressWhenTheTableMovesEndsInTheOldOne) {
    TableWriter<PairTable> writer("t", 10);
    for (U32 key = 0; key < 10; ++key) {
        writer.insert(key, Pair::of(key));
    }
    U32 met = 0;
    for (auto walk = writer.table()->begin(); walk; ++walk) {
        EXPECT_LT(walk.key(), 10U);
        ++met;
        for (U32 key = 0; key < 100; ++key) {
            writer.insert(1000 * met + key, Pair::of(key));
        }
    }
    EXPECT_EQ(met, 10U);
    EXPECT_EQ(writer.size(), 1010U);
}

TEST(TableWriter, ItsTableReadsTheSharedMemoryItself) {
    TableWriter<PairTable> writer("t");
    writer.insert(1, Pair::of(1));
    for (U64 slot = 0; slot < 16; ++slot) {
        RawMemory(writer.descriptor()).flip(headerSize + slot * slotSize + 9, 4);
    }
    EXPECT_THROW(contents(*writer.table()), CorruptionDetectedException);
}

TEST(TableWriter, ItsTableOutlivesIt) {
    Vex::Ptr<PairTable const> table;
    {
        TableWriter<PairTable> writer("t");
        writer.insert(1, Pair::of(1));
        table = writer.table();
    }
    EXPECT_EQ(contents(*table), (Entries{{1, Pair::of(1)}}));
}

TEST(TableWriter, WritesAFileThatOthersOpen) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    auto writer = TableWriter<PairTable>::inFile(path);
    writer.insert(1, Pair::of(1));
    EXPECT_EQ(writer.table()->name(), path);
    EXPECT_EQ(PairReader::open(path).value(1), Pair::of(1));
}

TEST(TableWriter, InOwnMemoryItsTableShowsEveryChangeAndFollowsAMove) {
    auto writer = TableWriter<PairTable>::inOwnMemory("t");
    auto const table = writer.table();
    EXPECT_EQ(table->name(), "t");
    EXPECT_LT(writer.descriptor(), 0);
    Entries expected;
    for (U32 key = 0; key < 1000; ++key) {
        writer.insert(key, Pair::of(key));
        expected.emplace(key, Pair::of(key));
        ASSERT_EQ(table->size(), key + 1);
    }
    EXPECT_EQ(contents(*table), expected);
    writer.insert(1, Pair::of(2));
    writer.erase(2);
    EXPECT_EQ(table->value(1), Pair::of(2));
    EXPECT_EQ(table->value(2), Pair());
}

TEST(TableWriter, AWalkInOwnMemoryThatIsLeftEndsInIt) {
    auto writer = TableWriter<PairTable>::inOwnMemory("t", 10);
    for (U32 key = 0; key < 10; ++key) {
        writer.insert(key, Pair::of(key));
    }
    U32 met = 0;
    for (auto walk = writer.table()->begin(); walk; ++walk) {
        ++met;
        for (U32 key = 0; key < 100; ++key) {
            writer.insert(1000 * met + key, Pair::of(key));
        }
    }
    EXPECT_EQ(met, 10U);
}

TEST(TableWriter, ATableInOwnMemoryOutlivesItsWriter) {
    Vex::Ptr<PairTable> table;
    {
        auto writer = TableWriter<PairTable>::inOwnMemory("t");
        writer.insert(1, Pair::of(1));
        table = writer.table();
    }
    EXPECT_EQ(contents(*table), (Entries{{1, Pair::of(1)}}));
}

TEST(TableWriter, ALimitOnFileSizesDoesNotApplyToOwnMemory) {
    auto const limited = [] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit{0, 0};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            TableWriter<PairTable> const writer("t");
            ::_exit(1);
        } catch (TableError const &) {
            auto writer = TableWriter<PairTable>::inOwnMemory("t");
            ::_exit(writer.insert(1, Pair::of(1)) && writer.table()->size() == 1 ? 0 : 2);
        }
    };
    EXPECT_EXIT(limited(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace Pelo::Test
