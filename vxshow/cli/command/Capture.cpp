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

/// Where the snapshot goes, as typed.
struct Target {
    std::string path; ///< "-" for standard output
    bool force = false;
    bool incomplete = false;
    bool details = false;
};

void writeFile(Target const & target, state::Mount const & mount, Output const & output) {
    using system::AtomicFile;
    std::string const & path = target.path;
    try {
        AtomicFile file(path, AtomicFile::Temporary::unnamed,
                        target.force ? AtomicFile::OldFile::replace : AtomicFile::OldFile::keep);
        writeTo(file.descriptor(), mount, output);
        outfmt::checkInterrupt();
        file.commit();
    } catch (system::ReplacementRefused const & refused) {
        throw std::runtime_error(path + ": " + refused.what() + "; --force replaces it");
    } catch (outfmt::WriteError const & error) {
        throw std::runtime_error(path + ": " + std::generic_category().message(error.code()));
    } catch (std::system_error const & error) {
        throw std::runtime_error(path + ": " + error.code().message());
    }
}

void capture(Target const & target, state::Mount const & mount, int fd, Output const & output) {
    try {
        if (target.path == "-") {
            writeTo(fd, mount, output);
        } else {
            writeFile(target, mount, output);
        }
    } catch (outfmt::SigIntException const & interrupt) {
        std::printf("exiting %s\n", interrupt.what());
    }
}

} // namespace

void addCapture(CLI::App & app, CommandLine & chosen) {
    auto * command = app.add_subcommand("capture", "Saves the state as a snapshot");
    command->fallthrough();
    auto const target = std::make_shared<Target>();
    command
        ->add_option("FILE", target->path,
                     "Snapshot to write; an existing file is replaced; - is standard output")
        ->required()
        ->type_name("");
    command
        ->add_flag("--force", target->force,
                   "Replace a file whose owner cannot be kept or that has several names")
        ->disable_flag_override();
    command
        ->add_flag("--incomplete", target->incomplete,
                   "Save what there is when a live source cannot be read")
        ->disable_flag_override();
    command
        ->add_flag("--details", target->details,
                   "Ask FRR for the age and the flags of each MAC address, too, which takes zebra "
                   "twice the time")
        ->disable_flag_override();
    command->callback([&chosen, target] {
        if (target->path.empty()) {
            throw CLI::ValidationError("FILE", "'': expected the name of a file");
        }
        chosen.command = "capture";
        chosen.draws = false;
        chosen.takesIncomplete = target->incomplete;
        chosen.selection.details = true;
        chosen.selection.macDetails = target->details;
        chosen.toStandardOutput = target->path == "-";
        chosen.render = [target](state::Mount const & mount, int fd, Output const & output) {
            capture(*target, mount, fd, output);
        };
    });
}

} // namespace vxshow::cli::command
