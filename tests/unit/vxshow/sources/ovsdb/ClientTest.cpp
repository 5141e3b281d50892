#include "vxshow/sources/ovsdb/Client.h"

#include "tests/unit/vxshow/sources/ovsdb/ScriptedServers.h"

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using namespace std::chrono_literals;

class OvsdbClientReason : public ScriptedServers {
protected:
    /// The failure of a client that prints `errors`, with the escapes of printf, on standard error
    /// and exits with 1.
    std::string reasonOf(std::string const & errors) const {
        return reasonFrom("printf '" + errors + "' >&2; exit 1", maxClientOutput);
    }

    /// The failure of a client that does what `script` does; "answered" if it answers.
    std::string reasonFrom(std::string const & script, std::size_t longestAnswer) const {
        auto const remote = server("it", script);
        std::optional<DatabaseAddress::Ssl> const noSsl;
        try {
            Client(remote, noSsl, longestAnswer).query("[]", Deadline::in(2min));
        } catch (ServerFailure const & failure) {
            return failure.what();
        }
        return "answered";
    }
};

} // namespace

TEST_F(OvsdbClientReason, IsTheLastLineThatIsNotBlankWithoutItsName) {
    EXPECT_EQ(reasonOf("first\\novsdb-client: failed to connect to \"x\" (No route)\\n"),
              "unreachable: failed to connect to \"x\" (No route)");
    EXPECT_EQ(reasonOf("first\\novsdb-client: last\\n \\t\\v\\f\\r\\n\\n"), "broken answer: last");
}

TEST_F(OvsdbClientReason, HasNoBlanksAroundIt) {
    EXPECT_EQ(reasonOf("ovsdb-client: last\\r\\n"), "broken answer: last");
    EXPECT_EQ(reasonOf("first\\r\\n \\tovsdb-client: \\v last \\f\\r\\n"), "broken answer: last");
}

TEST_F(OvsdbClientReason, IsTheLengthOfAnAnswerThatIsTooLong) {
    EXPECT_EQ(maxClientOutput, 2'147'483'648U);
    EXPECT_EQ(reasonFrom("printf 12345678", 8), "answered");
    EXPECT_EQ(reasonFrom("printf 123456789", 8), "broken answer: more than 8 bytes");
    // A client that never stops is ended.
    EXPECT_EQ(reasonFrom("exec cat /dev/zero", 100'000), "broken answer: more than 100000 bytes");
}

TEST_F(OvsdbClientReason, IsAStringWithoutEndLongBeforeTheLongestAnswer) {
    EXPECT_EQ(reasonFrom("printf \\\"; exec tr '\\0' x </dev/zero", maxClientOutput),
              "broken answer: more than 67108864 bytes without the end of a value");
}

TEST_F(OvsdbClientReason, ManyShortTextsAreNotEndless) {
    EXPECT_EQ(reasonFrom("yes '\"x\"' | head -c 70000000", maxClientOutput), "answered");
}

TEST_F(OvsdbClientReason, IsTheStatusIfThereIsNoMessage) {
    EXPECT_EQ(reasonOf(""), "ovsdb-client ended with exit status 1");
    EXPECT_EQ(reasonOf(" \\t\\r\\n\\v\\f\\n"), "ovsdb-client ended with exit status 1");
}

} // namespace vxshow::test
