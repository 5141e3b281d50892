#include "vxshow/listing/Arranged.h"
#include "tests/unit/vxshow/listing/Hosts.h"

#include "outfmt/Interrupt.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

using Order = std::vector<listing::SortKey>;

/// The names of the arranged hosts, with a blank after each.
std::string namesOf(listing::Walk const & walk) {
    class Names final : public listing::RowSink {
    public:
        std::string text;

        void row(listing::Row row) override {
            text.append(std::get<std::string_view>(row[0])).append(" ");
        }
    };

    Names names;
    walk(names);
    return names.text;
}

std::string arrangedNames(std::vector<Host> const & rows, Order const & order,
                          std::optional<Vex::U32> top = {}) {
    return namesOf(listing::arranged(walkOver(rows), order, top));
}

std::vector<Host> const someHosts{
    host("c", 9, Vex::U64{2}, ipCell("10.0.0.10")),
    host("a", 10, Vex::U64{100}, ipCell("10.0.0.9")),
    host("d", 9, listing::Unknown(), ipCell("2001:db8::1")),
    host("b", 100, Vex::U64{2}),
};

} // namespace

TEST(Arranged, WithoutAnOrderRowsComeAsTheyAre) {
    EXPECT_EQ(arrangedNames(someHosts, {}), "c a d b ");
}

TEST(Arranged, NumbersAreSortedByTheirValue) {
    EXPECT_EQ(arrangedNames(someHosts, {{1, false}}), "c d a b ");
}

TEST(Arranged, AddressesAreSortedByTheirValueIpv4First) {
    EXPECT_EQ(arrangedNames(someHosts, {{4, false}}), "a c d b ");
}

TEST(Arranged, UnknownValuesComeLastInEitherDirection) {
    EXPECT_EQ(arrangedNames(someHosts, {{3, false}}), "c b a d ");
    EXPECT_EQ(arrangedNames(someHosts, {{3, true}}), "a c b d ");
}

TEST(Arranged, ALaterColumnDecidesWhereTheFirstIsEqual) {
    EXPECT_EQ(arrangedNames(someHosts, {{3, false}, {0, false}}), "b c a d ");
    EXPECT_EQ(arrangedNames(someHosts, {{1, true}, {0, true}}), "b a d c ");
}

TEST(Arranged, EqualRowsKeepTheirOrder) {
    EXPECT_EQ(arrangedNames(someHosts, {{2, true}}), "c a d b ");
}

TEST(Arranged, TopTakesTheFirstRows) {
    EXPECT_EQ(arrangedNames(someHosts, {}, 2), "c a ");
    EXPECT_EQ(arrangedNames(someHosts, {{0, true}}, 2), "d c ");
    EXPECT_EQ(arrangedNames(someHosts, {{0, false}}, 9), "a b c d ");
}

TEST(Arranged, TheTopOfManyRowsIsThatOfAllOfThemSorted) {
    std::vector<std::string> names;
    for (unsigned number = 0; number < 5000; ++number) {
        names.push_back(std::to_string(number));
    }
    std::vector<Host> rows;
    for (unsigned number = 0; number < 5000; ++number) {
        // Every value comes twice, the second time in another order.
        rows.push_back(host(names[number], number * 7919 % 2500));
    }
    std::string expected;
    for (std::string const & name : {names[0], names[2500], names[179], names[2679]}) {
        expected += name + " ";
    }
    EXPECT_EQ(arrangedNames(rows, {{1, false}}, 4), expected);
}

TEST(Arranged, SortedRowsCanBeWalkedTwice) {
    auto const walk = listing::arranged(walkOver(someHosts), {{0, false}}, {});
    EXPECT_EQ(namesOf(walk), "a b c d ");
    EXPECT_EQ(namesOf(walk), "a b c d ");
}

TEST(Arranged, AnInterruptEndsTheCollecting) {
    outfmt::requestInterrupt();
    EXPECT_THROW(arrangedNames(someHosts, {{0, false}}), outfmt::SigIntException);
    outfmt::clearInterrupt();
}

} // namespace vxshow::test
