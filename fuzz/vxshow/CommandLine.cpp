#include "vxshow/cli/CommandLine.h"

#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"
#include "fuzz/harness/Lines.h"
#include "vxshow/cli/command/Commands.h"

#include <cstdlib>
#include <vector>

/// Command lines: values, help, or a refusal of one line. An input is the arguments, each of which
/// ends with a line end or a zero byte.
namespace fuzz {

namespace {

using namespace vxshow::cli;

void checkOutcome(CommandLine const & line) {
    check(!line.command.empty() && line.render, "an accepted line has no command");
    if (line.readsState) {
        auto const & state = line.state;
        auto const given = (state.snapshotPath.empty() ? 0 : 1) +
                           (state.fabricPath.empty() ? 0 : 1) + (state.tablesPath.empty() ? 0 : 1) +
                           (state.databases.empty() && !state.frr ? 0 : 1);
        check(given == 1, "an accepted line names no state, or several");
        check(!state.watchSeconds || line.draws, "what lists nothing is repeated");
    }
}

void checkOutcome(Help const & help) {
    check(help.text.ends_with('\n'), "help does not end its last line");
}

void checkOutcome(UsageError const & error) {
    checkLine(error.line);
}

void checkOutcome(InvalidConfig const & error) {
    checkLine(error.line);
}

} // namespace

void commandLine(std::string_view bytes) {
    static bool const cleared = ::unsetenv("VXSHOW_STATE") == 0 &&
                                ::unsetenv("VXSHOW_FABRIC") == 0 &&
                                ::setenv("XDG_CONFIG_HOME", "/nonexistent", 1) == 0 &&
                                ::setenv("VXSHOW_SYSTEM_CONFIG", "", 1) == 0;
    check(cleared, "the environment cannot be changed");
    std::vector<std::string> words{"vxshow"};
    std::string text(bytes);
    for (char & c : text) {
        c = c == '\0' ? '\n' : c;
    }
    for (Input input(text); !input.empty();) {
        words.emplace_back(input.upTo('\n'));
    }
    std::vector<char const *> argv;
    for (auto const & word : words) {
        argv.push_back(word.c_str());
    }
    argv.push_back(nullptr);
    std::visit([](auto const & read) { checkOutcome(read); },
               readCommandLine(static_cast<int>(words.size()), argv.data(), command::addCommands));
}

} // namespace fuzz
