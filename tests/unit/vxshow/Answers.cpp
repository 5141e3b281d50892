#include "tests/unit/vxshow/Answers.h"

#include "tests/unit/vxshow/Process.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

Finished shown(std::string const & snapshot, std::vector<std::string> & arguments) {
    TemporaryFile const state(snapshot);
    arguments.insert(arguments.begin(), {"--state", state.path()});
    return runVxshow(arguments);
}

std::string onlyErrorLine(Finished const & finished) {
    std::string const start = "vxshow: ";
    if (finished.err.substr(0, start.size()) != start || finished.err.back() != '\n') {
        ADD_FAILURE() << "no line of vxshow's: " << finished.err;
        return finished.err;
    }
    std::string const line = finished.err.substr(start.size(), finished.err.size() - 9);
    EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; }))
        << line;
    return line;
}

std::string onlyLine(Finished const & finished, int status) {
    EXPECT_EQ(finished.status, status);
    EXPECT_EQ(finished.out, "");
    return onlyErrorLine(finished);
}

} // namespace

std::string answer(std::string const & snapshot, std::vector<std::string> arguments) {
    Finished const finished = shown(snapshot, arguments);
    EXPECT_EQ(finished.status, 0) << testing::PrintToString(arguments);
    EXPECT_EQ(finished.err, "") << testing::PrintToString(arguments);
    return finished.out;
}

UnknownName answerOfUnknownName(std::string const & snapshot, std::vector<std::string> arguments) {
    Finished const finished = shown(snapshot, arguments);
    EXPECT_EQ(finished.status, 4) << testing::PrintToString(arguments);
    return {finished.out, onlyErrorLine(finished)};
}

std::string failure(std::string const & snapshot, std::vector<std::string> arguments) {
    return onlyLine(shown(snapshot, arguments), 1);
}

std::string refused(std::vector<std::string> const & arguments) {
    return onlyLine(runVxshow(arguments, {.stateFile = "/nonexistent"}), 2);
}

std::string snapshotWith(std::string const & name, std::string const & state) {
    return R"({"format":"vxlan-controller-state","version":1,")" + name + "\":" + state + "}";
}

std::string exampleFabric() {
    std::ifstream const file(EXAMPLE_FABRIC);
    EXPECT_TRUE(file) << EXAMPLE_FABRIC;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string Asked::listing(std::vector<std::string> const & filters) const {
    return answer(snapshot_, with(filters));
}

UnknownName Asked::unknownName(std::vector<std::string> const & filters) const {
    return answerOfUnknownName(snapshot_, with(filters));
}

std::string Asked::refusedFilter(std::vector<std::string> const & filters) const {
    return refused(with(filters));
}

void Asked::knowsNone(std::vector<std::string> const & options) const {
    for (std::string const & option : options) {
        std::string const start = "'" + option + "': not expected here";
        EXPECT_EQ(refusedFilter({option, "10.0.0.1"}).substr(0, start.size()), start);
    }
}

std::vector<std::string> Asked::with(std::vector<std::string> const & filters) const {
    std::vector<std::string> arguments = words_;
    arguments.insert(arguments.end(), filters.begin(), filters.end());
    return arguments;
}
