#include "outfmt/Interrupt.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/StateListing.h"

namespace vxshow::cli::command {

namespace {

void showState(state::Mount const & mount, int fd, Output const & output) {
    outfmt::Printer printer(fd, static_cast<unsigned>(output.format), true, false, true, 0);
    try {
        if (output.format == Format::text) {
            printState(printer, mount);
        } else {
            renderStateJson(printer, mount);
        }
        printer.flush();
    } catch (outfmt::SigIntException const &) {
        // The listing ends here; the exit status shows that it was interrupted.
    }
}

} // namespace

void addState(CLI::App & app, CommandLine & chosen) {
    auto * command = app.add_subcommand(
        "state", "Where the state comes from: its sources, when they were read, what they have");
    command->fallthrough();
    command->callback([&chosen] {
        chosen.command = "state";
        chosen.render = showState;
    });
}

} // namespace vxshow::cli::command
