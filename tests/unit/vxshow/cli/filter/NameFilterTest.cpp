#include "vxshow/cli/filter/NameFilter.h"

#include <gtest/gtest.h>

namespace {

using namespace vxshow::cli::filter;

std::string refusalOf(Texts const & texts) {
    try {
        readNames(texts);
    } catch (ValueError const & error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(NameFilter, OneNameIsForTheLibrary) {
    EXPECT_EQ(readNames({"leaf1"}).one, "leaf1");
    EXPECT_EQ(readNames({"leaf1", "leaf1"}).one, "leaf1");
    EXPECT_EQ(readNames({"name:a,*"}).one, "a,*");
    EXPECT_TRUE(readNames({"leaf1"}).many.empty());
}

TEST(NameFilter, OneEmptyTextIsNoFilter) {
    EXPECT_TRUE(readNames({""}).isNone());
    EXPECT_TRUE(readNames({}).isNone());
}

TEST(NameFilter, CommasRepetitionsAndPatternsMakeASet) {
    auto const filter = readNames({"leaf*,spine1", "name:x*"});
    EXPECT_EQ(filter.one, "");
    EXPECT_TRUE(filter.many.contains("leaf7"));
    EXPECT_TRUE(filter.many.contains("spine1"));
    EXPECT_TRUE(filter.many.contains("x*"));
    EXPECT_FALSE(filter.many.contains("xy"));
}

TEST(NameFilter, AnEmptyNameInAListIsRefused) {
    EXPECT_EQ(refusalOf({"a,,b"}), "'a,,b': expected a name on both sides of each comma");
    EXPECT_EQ(refusalOf({"a,"}), "'a,': expected a name on both sides of each comma");
    EXPECT_EQ(refusalOf({"a", ""}), "'': expected a name");
    EXPECT_EQ(refusalOf({"name:"}), "'name:': expected a name after name:");
}

TEST(NameFilter, OneSourceIsForTheLibrary) {
    for (char const * word : {"all", "hsc", "qvx", "evpn", "leaf1", "HSC"}) {
        EXPECT_EQ(readSources({word}).one, word);
        EXPECT_FALSE(readSources({word}).isList);
    }
    EXPECT_EQ(readSources({"name:leaf1"}).one, "leaf1");
}

TEST(NameFilter, TheNameOfASwitchCanBeAWord) {
    auto const filter = readSources({"name:all"});
    EXPECT_TRUE(filter.isList);
    EXPECT_TRUE(filter.takesSwitch("all"));
    EXPECT_FALSE(filter.takesSwitch("leaf1"));
    EXPECT_FALSE(filter.takesSource("HSC"));
    EXPECT_TRUE(filter.askedSwitches().contains("all"));
}

TEST(NameFilter, AListOfSourcesHasWordsAndNames) {
    auto const filter = readSources({"hsc,leaf*", "evpn"});
    EXPECT_TRUE(filter.isList);
    EXPECT_TRUE(filter.takesSource("HSC"));
    EXPECT_TRUE(filter.takesSource("EVPN"));
    EXPECT_FALSE(filter.takesSource("QVX"));
    EXPECT_TRUE(filter.takesSwitch("leaf1"));
    EXPECT_FALSE(filter.takesSwitch("hsc"));
    EXPECT_TRUE(readSources({"all,qvx"}).takesSwitch("spine1"));
}
