#include "tests/unit/vxshow/sources/ovsdb/ScriptedServers.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/ovsdb/Ask.h"

#include <string>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using namespace std::chrono_literals;

/// To a query, a server's answer if its schema has no switches.
constexpr char const * refuses =
    R"(echo '[{"error":"syntax error","details":"No table named Logical_Switch."}]')";

constexpr char const * words = "no such schema: answer for Logical_Switch: the server says syntax "
                               "error: No table named Logical_Switch.";

} // namespace

/// A server that refuses the first query, and then is asked for its schema.
class OlderSchema : public ScriptedServers {
protected:
    /// Why reading fails if the server does `then` when it is asked for its schema, and later.
    std::string failure(std::string const & then, std::chrono::milliseconds limit = 2min) const {
        DatabaseAddress const address{.remotes = {server("a", refuses, then)}};
        try {
            askDatabase(address, {.name = "rack"}, {}, {}, Deadline::in(limit));
        } catch (Failure const & failure) {
            return failure.what();
        }
        return "";
    }
};

TEST_F(OlderSchema, OfAServerThatWentAwayIsNotWhatFailed) {
    EXPECT_EQ(failure("echo 'ovsdb-client: failed to connect to \"a\" (Connection refused)' >&2; "
                      "exit 1"),
              "unreachable: failed to connect to \"a\" (Connection refused)");
}

TEST_F(OlderSchema, OfAServerThatHangsExceedsTheTimeLimit) {
    EXPECT_EQ(failure("exec sleep 60", 2s), "time limit: no answer within 2 s");
}

TEST_F(OlderSchema, ThatIsNotReadableLeavesTheServersOwnWords) {
    EXPECT_EQ(failure("echo nonsense"), words);
}

TEST_F(OlderSchema, WithoutAVersionNamesNone) {
    // The first of the two questions here is for its schema.
    EXPECT_EQ(failure("if [ -e $0.schema ]; then\n" + std::string(refuses) +
                      "\nelse\n> $0.schema; echo '{\"tables\":{}}'\nfi"),
              words);
}

} // namespace vxshow::test
