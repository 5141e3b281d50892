#include "Vex/Dir.h"

#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using Vex::Dir;
using Vex::makePtr;

TEST(Dir, FindsEntitiesByTheirExactName) {
    auto const dir = makePtr<Dir>();
    auto const leaf = makePtr<Counted>(1);
    dir->entityIs("leaf1", leaf);
    EXPECT_EQ(dir->entityPtr("leaf1"), leaf);
    EXPECT_EQ(dir->entityPtr("Leaf1"), nullptr);
    EXPECT_EQ(dir->entityPtr(""), nullptr);
    EXPECT_NE(dir->entryState("leaf1"), nullptr);
    EXPECT_EQ(dir->entryState("leaf2"), nullptr);
}

TEST(Dir, ReplacesAndRemovesEntities) {
    auto const dir = makePtr<Dir>();
    dir->entityIs("leaf1", makePtr<Counted>(1));
    auto const second = makePtr<Counted>(2);
    dir->entityIs("leaf1", second);
    EXPECT_EQ(dir->entityPtr("leaf1"), second);
    EXPECT_EQ(dir->size(), 1U);
    dir->entityIs("leaf1", nullptr);
    EXPECT_EQ(dir->entryState("leaf1"), nullptr);
    EXPECT_EQ(dir->size(), 0U);
}

TEST(Dir, ANestedDirectoryIsAnEntryButNotAnEntity) {
    auto const dir = makePtr<Dir>();
    auto const nested = dir->dirIs("pod1");
    EXPECT_EQ(dir->dirIs("pod1"), nested);
    EXPECT_NE(dir->entryState("pod1"), nullptr);
    EXPECT_EQ(dir->entityPtr("pod1"), nullptr);
}

TEST(Dir, TheWalkReachesEveryEntityOnceAndNoDirectory) {
    auto const dir = makePtr<Dir>();
    std::set<std::string> expected;
    for (int i = 0; i < 100; ++i) {
        std::string const name = "leaf" + std::to_string(i);
        dir->entityIs(name, makePtr<Counted>(i));
        dir->dirIs("pod" + std::to_string(i));
        expected.insert(name);
    }
    std::multiset<std::string> met;
    for (auto it = dir->entityPtrIteratorConst(); it; ++it) {
        met.insert(it.name().stringValue());
        EXPECT_EQ(it.entity(), dir->entityPtr(it.name()));
    }
    EXPECT_EQ(std::set<std::string>(met.begin(), met.end()), expected);
    EXPECT_EQ(met.size(), expected.size());
}
