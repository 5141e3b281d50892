#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "outfmt/Utf8.h"
#include "vxshow/cli/MemberPrinter.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/TextTable.h"

#include <string>

namespace vxshow::cli::command {

namespace {

/// A file name can be any bytes, the text of a JSON document only UTF-8.
std::string fileName(std::string const & path) {
    return outfmt::isUtf8(path) ? path : Vex::printable(path);
}

void printFabrics(outfmt::Printer & printer, config::Settings const & settings) {
    TextTable table({{"Fabric"}, {"Use"}, {"File"}, {"Defined in"}, {"Description"}});
    for (config::NamedFabric const & fabric : settings.fabrics) {
        table.add({Vex::printable(fabric.name), fabric.isHidden ? "hidden" : "-F",
                   Vex::printable(fabric.file), Vex::printable(fabric.definedIn),
                   Vex::printable(fabric.description)});
    }
    if (!settings.fabrics.empty()) {
        table.print(printer);
        printer.addFrills("\n");
    }
    for (config::ConfigPath const & file : settings.files) {
        printer.addFrills("%s: %s\n", Vex::printable(file.path),
                          file.isRead ? "read" : "no such file");
    }
}

void renderFabricsJson(outfmt::Printer & printer, config::Settings const & settings) {
    MemberPrinter members(printer);
    printer.start();
    printer.startList("fabrics");
    for (config::NamedFabric const & fabric : settings.fabrics) {
        printer.startListEntry();
        members.text("name", fabric.name);
        members.text("file", fileName(fabric.file));
        members.text("definedIn", fileName(fabric.definedIn));
        members.boolean("hidden", fabric.isHidden);
        if (!fabric.description.empty()) {
            members.text("description", fabric.description);
        }
        printer.endListEntry();
    }
    printer.endList();
    printer.startList("configurations");
    for (config::ConfigPath const & file : settings.files) {
        printer.startListEntry();
        members.text("file", fileName(file.path));
        members.boolean("read", file.isRead);
        printer.endListEntry();
    }
    printer.endList();
    printer.end();
}

void showFabrics(config::Settings const & settings, int fd, Output const & output) {
    outfmt::Printer printer(fd, static_cast<unsigned>(output.format), true, false, true, 0);
    try {
        if (output.format == Format::text) {
            printFabrics(printer, settings);
        } else {
            renderFabricsJson(printer, settings);
        }
        printer.flush();
    } catch (outfmt::SigIntException const &) {
        // The listing ends here; the exit status shows that it was interrupted.
    }
}

} // namespace

void addFabrics(CLI::App & app, CommandLine & chosen) {
    auto * command =
        app.add_subcommand("fabrics", "The fabrics of the configuration files, which -F shows");
    command->fallthrough();
    command->callback([&chosen] {
        chosen.command = "fabrics";
        chosen.readsState = false;
        chosen.draws = false;
        chosen.render = [settings = chosen.settings](state::Mount const &, int fd,
                                                     Output const & output) {
            showFabrics(*settings, fd, output);
        };
    });
}

} // namespace vxshow::cli::command
