#include "Vex/Errors.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/CompletionScripts.h"
#include "vxshow/system/DescriptorIo.h"

#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vxshow::cli::command {

namespace {

CompletionScript const & scriptFor(std::string const & shell) {
    for (CompletionScript const & script : completionScripts) {
        if (script.shell == shell) {
            return script;
        }
    }
    throw CLI::ValidationError("SHELL", Vex::quoted(shell) + ": expected bash, zsh or fish");
}

} // namespace

void addCompletion(CLI::App & app, CommandLine & chosen) {
    auto * command =
        app.add_subcommand("completion", "The script with which a shell completes vxshow's words");
    command->fallthrough();
    auto const shell = std::make_shared<std::string>();
    auto * const option =
        command->add_option("SHELL", *shell, "bash, zsh or fish")->required()->type_name("");
    std::vector<std::string> shells;
    shells.reserve(std::size(completionScripts));
    for (CompletionScript const & script : completionScripts) {
        shells.emplace_back(script.shell);
    }
    declareValues(*option, shells);
    command->callback([&chosen, shell] {
        auto const & script = scriptFor(*shell);
        chosen.command = "completion";
        chosen.readsState = false;
        chosen.usesSettings = false;
        chosen.draws = false;
        chosen.render = [&script](state::Mount const &, int fd, Output const &) {
            if (auto const error = system::writeAll(fd, script.text)) {
                throw std::runtime_error(error.message());
            }
        };
    });
}

} // namespace vxshow::cli::command
