#include "outfmt/Interrupt.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/state/tables/TableFiles.h"

#include <cstdio>
#include <memory>
#include <string>

namespace vxshow::cli::command {

namespace {

void publish(std::string const & directory, state::Mount const & mount) {
    try {
        state::tables::publishTables(mount, directory);
    } catch (outfmt::SigIntException const & interrupt) {
        std::printf("exiting %s\n", interrupt.what());
    }
}

} // namespace

void addTablesPublish(CLI::App & tables, CommandLine & chosen) {
    auto * command = tables.add_subcommand(
        "publish", "Writes the EVPN tables of the state as files that other processes map");
    command->fallthrough();
    auto const directory = std::make_shared<std::string>();
    command
        ->add_option("DIR", *directory,
                     "The directory of the files, which is created if it is absent")
        ->required()
        ->type_name("");
    command->callback([&chosen, directory] {
        if (directory->empty()) {
            throw CLI::ValidationError("DIR", "'': expected the name of a directory");
        }
        chosen.command = "tables publish";
        chosen.draws = false;
        chosen.toStandardOutput = false;
        chosen.selection = {.routers = false, .arpTables = false};
        chosen.render = [directory](state::Mount const & mount, int, Output const &) {
            publish(*directory, mount);
        };
    });
}

} // namespace vxshow::cli::command
