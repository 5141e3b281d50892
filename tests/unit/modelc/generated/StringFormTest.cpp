#include "Vex/Strep.h"
#include "models/Fleet.h"
#include "models/Survey.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <sstream>

using Vex::strepToValue;

namespace {

/// The message of the Error that reading the text throws.
template <class T, class Error>
std::string errorOf(Vex::String const & text) {
    try {
        strepToValue<T>(text);
    } catch (Error const & error) {
        return error.what();
    }
    return "it was read";
}

} // namespace

namespace Test::Fleet {

TEST(GeneratedStringForm, ListsTheAttributesInOrder) {
    EXPECT_EQ(valueToStrep(Berth(7, "Anna", 30)),
              "Value('Test::Fleet::Berth', ** {'number': 7, 'ship': Anna, 'fee': 30, "
              "'lit': True, 'surveyor': none})");
}

TEST(GeneratedStringForm, IsReadBack) {
    Berth berth(7, "Anna", 30);
    berth.litIs(false);
    berth.surveyorIs("");
    EXPECT_EQ(strepToValue<Berth>(valueToStrep(berth)), berth);
    EXPECT_EQ(strepToValue<Berth>(valueToStrep(Berth())), Berth());
}

TEST(GeneratedStringForm, ReadsWithinALongerText) {
    Vex::String const text = valueToStrep(Berth(7, "Anna", 30)) + ", and more";
    auto it = text.begin();
    auto const end = text.end();
    EXPECT_EQ(Berth(it, end), Berth(7, "Anna", 30));
    EXPECT_EQ(std::string(it, end), ", and more");
}

TEST(GeneratedStringForm, WritesNoneForEveryCollection) {
    Voyage voyage(Vex::Name("north"));
    voyage.stopsIs("Riga", true);
    voyage.berthsIs(Berth(7, "Anna", 30));
    voyage.depthIs(Sea::Depth(12));
    EXPECT_EQ(valueToStrep(voyage), "Value('Test::Fleet::Voyage', ** {'name': north, "
                                    "'stops': None, 'depth': 12m, 'berths': None})");
}

TEST(GeneratedStringForm, IsWhatTheOutputOperatorWrites) {
    Berth const berth(7, "Anna", 30);
    std::ostringstream out;
    out << berth << "; " << Voyage();
    EXPECT_EQ(out.str(), valueToStrep(berth) + "; " + valueToStrep(Voyage()));
}

TEST(GeneratedStringFormDeathTest, AValueWithACollectionIsNotRead) {
    Vex::String const text = valueToStrep(Voyage());
    EXPECT_EXIT(strepToValue<Voyage>(text), testing::KilledBySignal(SIGABRT),
                "^Fleet.cpp:[0-9]+: Voyage: assertion "
                "'!\"No String constructor for Voyage - has collection\"' failed\n$");
}

} // namespace Test::Fleet

namespace Test::Survey {

namespace {

Sheet someSheet() {
    Sheet sheet(Vex::Name("Bay of Riga"));
    sheet.smallIs(1);
    sheet.mediumIs(2);
    sheet.largeIs(3);
    sheet.hugeIs(18446744073709551615U);
    sheet.checkedIs(true);
    sheet.remarkIs("it's {old}, and torn");
    sheet.deepestIs(Sounding(Sea::Depth(40), Quay::Seqno32(9)));
    return sheet;
}

/// Whether the text contains a sequence that ends a text in a string form.
bool hasTerminator(std::string_view text) {
    return text.find(", '") != text.npos || text.find("})") != text.npos;
}

constexpr char const * sheetForm =
    "Value('Test::Survey::Sheet', ** {'name': Bay of Riga, 'small': 1, 'medium': 2, "
    "'large': 3, 'huge': 18446744073709551615, 'checked': True, 'remark': it's {old}, and torn, "
    "'plain': , 'deepest': Value('Test::Survey::Sounding', ** {'depth': 40m, 'count': 9})})";

} // namespace

TEST(GeneratedStringForm, ContainsTheFormsOfNestedValues) {
    EXPECT_EQ(valueToStrep(someSheet()), sheetForm);
    Folder folder;
    folder.sheetIs(someSheet());
    EXPECT_EQ(valueToStrep(folder), "Value('Test::Survey::Folder', ** {'sheet': " +
                                        std::string(sheetForm) + ", 'archived': False})");
}

TEST(GeneratedStringForm, IsReadBackWithNestedValues) {
    EXPECT_EQ(strepToValue<Sheet>(sheetForm), someSheet());
    Folder folder;
    folder.sheetIs(someSheet());
    folder.archivedIs(true);
    EXPECT_EQ(strepToValue<Folder>(valueToStrep(folder)), folder);
}

TEST(GeneratedStringForm, AnErrorNamesThePathToTheAttribute) {
    Vex::String text(sheetForm);
    text.replace(text.find("40m"), 3, "1001m");
    EXPECT_EQ((errorOf<Sheet, Vex::RangeError>(text)),
              "deepest: depth: '1001': expected 0m to 1000m");
    text = sheetForm;
    text.replace(text.find("'small': 1"), 10, "'small': 256");
    EXPECT_EQ((errorOf<Sheet, Vex::RangeError>(text)),
              "small: '256': expected a number from 0 to 255");
    text = sheetForm;
    text.replace(text.find("40m"), 3, "deep");
    EXPECT_EQ((errorOf<Sheet, Vex::ParseError>(text)),
              "deepest: depth: 'deep': expected 0m to 1000m");
}

TEST(GeneratedStringForm, ATextThatLooksLikeAttributesIsRejected) {
    for (char const * remark :
         {"x, 'plain': y", "})", "a})b", "x, '",
          "x, 'plain': , 'deepest': "
          "Value('Test::Survey::Sounding', ** {'depth': 1m, 'count': 1})})"}) {
        Sheet sheet = someSheet();
        sheet.remarkIs(remark);
        EXPECT_NE((errorOf<Sheet, Vex::ParseError>(valueToStrep(sheet))), "it was read") << remark;
    }
}

TEST(GeneratedStringForm, ValuesWithAnyTextAreReadBackOrRejected) {
    std::array<char const *, 9> const pieces{"a", " ",   ",",  "'",           "}",
                                             ")", ", '", "})", "', 'plain': "};
    std::mt19937 random(18);
    int read = 0;
    for (int round = 0; round < 20000; ++round) {
        auto const text = [&] {
            std::string made;
            for (auto left = random() % 5; left > 0; --left) {
                made += pieces[random() % pieces.size()];
            }
            return made;
        };
        Sheet sheet = someSheet();
        sheet.remarkIs(Vex::String(text()));
        sheet.plainIs(text());
        Folder folder;
        folder.sheetIs(sheet);
        Vex::String const form = valueToStrep(folder);
        if (hasTerminator(sheet.remark()) || hasTerminator(sheet.plain())) {
            EXPECT_THROW(strepToValue<Folder>(form), Vex::ParseError) << form;
        } else {
            EXPECT_EQ(strepToValue<Folder>(form), folder);
            ++read;
        }
    }
    EXPECT_GT(read, 5000) << "texts without a terminator";
    EXPECT_LT(read, 15000) << "the others have one";
}

TEST(GeneratedStringForm, AValueWithoutAttributesHasAnEmptyList) {
    EXPECT_EQ(valueToStrep(Nothing()), "Value('Test::Survey::Nothing', ** {})");
    EXPECT_EQ(strepToValue<Nothing>("Value('Test::Survey::Nothing', ** {})"), Nothing());
    EXPECT_EQ((errorOf<Nothing, Vex::ParseError>("Value('Test::Survey::Nothing', ** { })")),
              "' })': expected \"})\"");
}

TEST(GeneratedStringFormDeathTest, AValueContainingACollectionIsNotRead) {
    Room const room((Shelf(Vex::Name("upper"))));
    Vex::String const text = valueToStrep(room);
    EXPECT_EQ(text, "Value('Test::Survey::Room', ** {'shelf': Value('Test::Survey::Shelf', ** "
                    "{'name': upper, 'sheets': None, 'hashed': None}), 'door': 0})");
    EXPECT_EXIT(strepToValue<Room>(text), testing::KilledBySignal(SIGABRT),
                "'!\"No String constructor for Room - has collection\"' failed");
}

} // namespace Test::Survey
