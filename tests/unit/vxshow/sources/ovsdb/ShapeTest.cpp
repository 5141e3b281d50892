#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using enum Table;

/// The error for a database whose table has that one row.
std::string rowError(Table table, std::string const & row) {
    Database database;
    database[table] = {row};
    return answerError(database.answer());
}

/// The tokens of a document in which every string is free of escapes: where each starts, and
/// how long it is.
std::vector<std::pair<std::size_t, std::size_t>> tokensOf(std::string const & text) {
    std::vector<std::pair<std::size_t, std::size_t>> tokens;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at + 1;
        if (text[at] == '"') {
            end = text.find('"', end) + 1;
        } else if (std::isdigit(static_cast<unsigned char>(text[at]))) {
            end = text.find_first_not_of("0123456789", at);
        } else {
            at = end;
            continue;
        }
        tokens.emplace_back(at, end - at);
        at = end;
    }
    return tokens;
}

} // namespace

TEST(HardwareVtepShape, AnErrorOfTheServerIsNamedWithItsTable) {
    auto const answer = capture("query.json");
    auto const cut = answer.substr(0, answer.find("},{\"rows\"") + 1);
    EXPECT_EQ(answerError(cut +
                          R"(,{"details":"No column tunnel_key in table Physical_Locator.",)"
                          R"("error":"unknown column","syntax":"\"tunnel_key\""},null,null])"),
              "answer for Physical_Locator: the server says unknown column: No column tunnel_key "
              "in table Physical_Locator.");
}

TEST(HardwareVtepShape, OnlyAnUnknownTableOrColumnIsAnErrorOfTheSchema) {
    auto const read = [](std::string const & error) {
        readDatabase(system::FileBytes::copyOf("[{\"error\":\"" + error + "\"}]"), Request::whole(),
                     {"lab"});
    };
    EXPECT_THROW(read("syntax error"), RequestRefused);
    EXPECT_THROW(read("unknown column"), RequestRefused);
    try {
        read("resources exhausted");
        FAIL();
    } catch (RequestRefused const &) {
        FAIL();
    } catch (AnswerError const & error) {
        EXPECT_STREQ(error.what(),
                     "answer for Logical_Switch: the server says resources exhausted");
    }
}

TEST(HardwareVtepShape, AnErrorOfTheServerIsShownPrintable) {
    EXPECT_EQ(answerError("[{\"error\":\"\\u001b[2J\\n\"}]"),
              "answer for Logical_Switch: the server says \\x1b[2J\\x0a");
}

TEST(HardwareVtepShape, AnAnswerThatIsNotJson) {
    EXPECT_EQ(answerError(""), "answer: 1:1: found the end of the file, expected an array");
    EXPECT_EQ(answerError("[{\"rows\":["),
              "answer: 1:11: [0].rows[0]: found the end of the file, expected a value or ']'");
    EXPECT_EQ(answerError("]"), "answer: 1:1: found ']', expected an array of 12 answers");
}

TEST(HardwareVtepShape, AnAnswerFollowedByText) {
    EXPECT_TRUE(answerError(Database().answer() + "[]")
                    .ends_with("found an array, expected the end of the file"));
}

TEST(HardwareVtepShape, AnAnswerThatIsNotAnArray) {
    EXPECT_EQ(answerError("{}"), "answer: 1:1: found an object, expected an array of 12 answers");
    EXPECT_EQ(answerError("7"), "answer: 1:1: found 7, expected an array of 12 answers");
}

TEST(HardwareVtepShape, AnAnswerWithTooFewOrTooManyElements) {
    EXPECT_EQ(answerError("[]"), "answer: 1:1: found an array of fewer, "
                                 "expected an array of 12 answers");
    auto longer = Database().answer();
    longer.insert(longer.rfind(']'), ",{\"rows\":[]}");
    EXPECT_TRUE(answerError(longer).ends_with("found an object, expected an array of 12 answers"));
}

TEST(HardwareVtepShape, AnElementWithoutRows) {
    EXPECT_EQ(answerError("[{}]"), "answer for Logical_Switch: 1:2: [0]: found an object, "
                                   "expected an object with \"rows\"");
    EXPECT_EQ(answerError("[null]"), "answer for Logical_Switch: 1:2: [0]: found null, expected "
                                     "an object with \"rows\"");
    EXPECT_EQ(answerError("[{\"rows\":{}}]"), "answer for Logical_Switch: 1:10: [0].rows: found "
                                              "an object, expected a list of rows");
}

TEST(HardwareVtepShape, ARowWithoutAColumn) {
    EXPECT_TRUE(rowError(physicalSwitch, R"({"name":"a","ports":["set",[]]})")
                    .starts_with("answer for Physical_Switch: 1:"));
    EXPECT_TRUE(rowError(physicalSwitch, R"({"name":"a","ports":["set",[]]})")
                    .ends_with("expected \"tunnel_ips\" in it"));
}

TEST(HardwareVtepShape, AReferenceToNoRow) {
    Database database;
    database.unicast(ucastMacsLocal, "02:00:00:00:00:01", 1, 99);
    EXPECT_TRUE(answerError(database.answer())
                    .ends_with("[10].rows[0].locator[1]: found \"00000000-0000-4000-8000-"
                               "000000000099\", expected the _uuid of a row of Physical_Locator"));
}

TEST(HardwareVtepShape, ARepeatedRow) {
    Database database;
    database[logicalSwitch].push_back(database[logicalSwitch].front());
    EXPECT_TRUE(answerError(database.answer())
                    .ends_with("found \"00000000-0000-4000-8000-000000000001\" again, expected "
                               "it once"));
}

TEST(HardwareVtepShape, ACellOfTheWrongType) {
    auto const locatorWith = [](std::string const & ip, std::string const & key) {
        return rowError(physicalLocator, R"({"_uuid":)" + row(11) + R"(,"dst_ip":)" + ip +
                                             R"(,"tunnel_key":)" + key + "}");
    };
    EXPECT_TRUE(locatorWith("5", "5").ends_with("dst_ip: found 5, expected a text"));
    for (auto const * key : {"\"5\"", "5.0", "9223372036854775808", "true", "null", "{}"}) {
        EXPECT_TRUE(locatorWith("\"\"", key)
                        .ends_with("expected a whole number of 64 bits or an empty set"))
            << key;
    }
    EXPECT_TRUE(locatorWith("\"\"", R"(["set",[1,2]])").ends_with("expected at most one number"));
    EXPECT_TRUE(locatorWith("\"\"", R"(["map",[]])").ends_with("or an empty set"));
    EXPECT_TRUE(locatorWith("\"\"", R"(["set"])").ends_with("or an empty set"));
    EXPECT_TRUE(locatorWith("\"\"", R"(["set",[],1])").ends_with("expected the end of a pair"));
    EXPECT_TRUE(rowError(physicalLocatorSet,
                         R"({"_uuid":["uuid","8E81973E-0bec-47b0-b898-d190f9ebdacc"],)"
                         R"("locators":["set",[]]})")
                    .ends_with("expected the identity of a row such as "
                               "8e81973e-0bec-47b0-b898-d190f9ebdacc"));
}

TEST(HardwareVtepShape, AnAnswerThatIsCutOffAnywhereIsRefused) {
    auto const answer = capture("query.json");
    auto const whole = answer.rfind(']') + 1;
    for (std::size_t length = 0; length < whole; length += 7) {
        EXPECT_TRUE(answerError(answer.substr(0, length)).starts_with("answer: ")) << length;
    }
    EXPECT_EQ(answerError(answer.substr(0, whole)), "accepted");
}

/// Whatever replaces a value, the answer is read whole or refused in one line.
TEST(HardwareVtepShape, AnyValueInPlaceOfAnyOtherIsReadOrRefused) {
    auto const answer = capture("query.json");
    std::size_t refused = 0;
    std::size_t tried = 0;
    for (auto const & [at, length] : tokensOf(answer)) {
        for (auto const * value : {"5", "\"x\"", "null", "true", "{}", "[]", "-1.5e3"}) {
            auto mutant = answer;
            mutant.replace(at, length, value);
            refused += answerError(mutant) == "accepted" ? 0 : 1;
            ++tried;
        }
    }
    EXPECT_GT(refused, tried / 2);
    EXPECT_LT(refused, tried);
}

} // namespace vxshow::test
