#include "outfmt/Interrupt.h"
#include "outfmt/WriteError.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/state/snapshot/Document.h"
#include "vxshow/system/AtomicFile.h"

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vxshow::cli::command {

namespace {

void writeTo(int fd, state::Mount const & mount, Output const & output) {
    // A snapshot is always JSON: compact unless indented JSON was asked for.
    auto const format =
        output.format == Format::indentedJson ? Format::indentedJson : Format::compactJson;
    outfmt::Printer printer(fd, static_cast<unsigned>(format), true, false, true, 0);
    state::snapshot::writeSnapshot(mount, printer);
}

void writeFile(std::string const & path, state::Mount const & mount, Output const & output) {
    try {
        system::AtomicFile file(path);
        writeTo(file.descriptor(), mount, output);
        outfmt::checkInterrupt();
        file.commit();
    } catch (outfmt::WriteError const & error) {
        throw std::runtime_error(path + ": " + std::generic_category().message(error.code()));
    } catch (std::system_error const & error) {
        throw std::runtime_error(path + ": " + error.code().message());
    }
}

void capture(std::string const & path, state::Mount const & mount, int fd, Output const & output) {
    try {
        if (path == "-") {
            writeTo(fd, mount, output);
        } else {
            writeFile(path, mount, output);
        }
    } catch (outfmt::SigIntException const & interrupt) {
        std::printf("exiting %s\n", interrupt.what());
    }
}

} // namespace

void addCapture(CLI::App & app, CommandLine & chosen) {
    auto * command = app.add_subcommand("capture", "Saves the state as a snapshot");
    command->fallthrough();
    auto const path = std::make_shared<std::string>();
    command
        ->add_option("FILE", *path,
                     "Snapshot to write; an existing file is replaced; - is standard output")
        ->required()
        ->type_name("");
    command->callback([&chosen, path] {
        if (path->empty()) {
            throw CLI::ValidationError("FILE", "'': expected the name of a file");
        }
        chosen.command = "capture";
        chosen.draws = false;
        chosen.render = [path](state::Mount const & mount, int fd, Output const & output) {
            capture(*path, mount, fd, output);
        };
    });
}

} // namespace vxshow::cli::command
