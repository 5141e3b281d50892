#include "vxshow/cli/command/ModelListing.h"

#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/ObjectListing.h"
#include "vxshow/text/Similar.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace vxshow::cli::command {

namespace {

std::string_view lastPart(std::string_view name) {
    auto const colons = name.rfind("::");
    return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

/// A hint after an unknown name: the types that were probably meant if they are few, or how to list
/// all of them.
std::string hint(std::string_view typed) {
    constexpr std::size_t fewTypes = 4;
    constexpr std::size_t fewSlips = 2;
    std::string const sought = text::lowerCase(lastPart(typed));
    std::string near;
    std::size_t found = 0;
    for (auto const * type : Vex::typeTable()) {
        std::string const name = text::lowerCase(lastPart(type->name));
        if (text::editDistance(sought, name) <= fewSlips ||
            (!sought.empty() && name.find(sought) != std::string::npos)) {
            near.append(near.empty() ? "" : ", ").append(lastPart(type->name));
            ++found;
        }
    }
    return found == 0 || found > fewTypes ? "'vxshow model' lists all types" : "similar: " + near;
}

/// The type with this full name, or otherwise the one whose last part of the name it is.
Vex::Type const & typeCalled(std::string const & typed) {
    if (auto const * type = Vex::typeNode(typed)) {
        return *type;
    }
    for (auto const * type : Vex::typeTable()) {
        if (lastPart(type->name) == typed) {
            return *type;
        }
    }
    throw CLI::ValidationError("TYPE",
                               Vex::quoted(typed) + ": not a type of the model; " + hint(typed));
}

/// Has `text` or `json` print on `fd`, as the user wants it.
template <class Text, class Json>
void print(int fd, Output const & output, Text && text, Json && json) {
    outfmt::Printer printer(fd, static_cast<unsigned>(output.format), true, false, true, 0);
    try {
        if (output.format == Format::text) {
            text(printer);
        } else {
            json(printer);
        }
        printer.flush();
    } catch (outfmt::SigIntException const &) {
        // The listing ends here; the exit status shows that it was interrupted.
    }
}

void list(Vex::Type const * only, int fd, Output const & output) {
    print(
        fd, output,
        [&](outfmt::Printer & printer) {
            if (only) {
                printType(printer, *only);
            } else {
                printTypes(printer, Vex::typeTable());
            }
        },
        [&](outfmt::Printer & printer) {
            renderTypesJson(printer, only ? ModelTypes{only} : Vex::typeTable());
        });
}

/// Collecting is part of the listing: an interrupt ends it in the same way.
void listCollected(Collection const & collection, state::Mount const & mount, int fd,
                   Output const & output) {
    print(
        fd, output,
        [&](outfmt::Printer & printer) {
            printObjects(printer, collection.collect(mount, output));
        },
        [&](outfmt::Printer & printer) {
            renderObjectsJson(printer, collection.collect(mount, output));
        });
}

struct Collecting {
    std::string_view words;
    Collection (*collect)(CLI::App & options);
};

constexpr std::array<Collecting, 7> collectingCommands{{{"mac received", collectMacReceived},
                                                        {"mac advertised", collectMacAdvertised},
                                                        {"arp received", collectArpReceived},
                                                        {"arp advertised", collectArpAdvertised},
                                                        {"router map", collectRouterMap},
                                                        {"router detail", collectRouterDetail},
                                                        {"router routes", collectRouterRoutes}}};

/// The command of those words, or null.
Collecting const * collectingCommand(std::string_view words) {
    auto const * const found =
        std::find_if(collectingCommands.begin(), collectingCommands.end(),
                     [&](Collecting const & candidate) { return candidate.words == words; });
    return found == collectingCommands.end() ? nullptr : found;
}

std::string refuseOtherCommands(std::string const & words) {
    if (collectingCommand(words)) {
        return "";
    }
    std::string expected;
    for (auto const & command : collectingCommands) {
        expected.append(expected.empty() ? "" : ", ").append(command.words);
    }
    return Vex::quoted(words) + ": expected one of " + expected;
}

/// Adds the option, and with `of` the filters of that command in place of TYPE.
void addObjects(CLI::App & model, CommandLine & chosen, std::string const & of) {
    auto const * const command = collectingCommand(of);
    if (!command) {
        return; // the option refuses it
    }
    auto const collection = std::make_shared<Collection>(command->collect(model));
    model.callback([&chosen, collection, of] {
        chosen.command = "model --of '" + of + "'";
        chosen.selection = collection->selection();
        chosen.unknownNames = collection->unknownNames;
        chosen.render = [collection](state::Mount const & mount, int fd, Output const & output) {
            listCollected(*collection, mount, fd, output);
        };
    });
}

void addTypes(CLI::App & model, CommandLine & chosen) {
    auto const typed = std::make_shared<std::string>();
    auto const * option =
        model
            .add_option(
                "TYPE", *typed,
                "Only this type, with its attributes: MacVtep, or VxlanController::Cli::MacVtep")
            ->type_name("");
    // The name is looked up after the parsing, so that an unknown option is reported first.
    model.callback([&chosen, typed, option] {
        Vex::Type const * const only = option->count() > 0 ? &typeCalled(*typed) : nullptr;
        chosen.command = "model";
        chosen.readsState = false;
        chosen.draws = false;
        chosen.render = [only](state::Mount const &, int fd, Output const & output) {
            list(only, fd, output);
        };
    });
}

} // namespace

void addModel(CLI::App & app, CommandLine & chosen, std::optional<std::string> const & of) {
    auto * command =
        app.add_subcommand("model", "The types of the model that commands collect the state into, "
                                    "or the objects that a command has collected");
    command->fallthrough();
    auto * const option =
        command
            ->add_option("--of",
                         "The objects that this command collects, with all attributes: 'mac "
                         "received'. Its filters follow; --of COMMAND --help lists them")
            ->type_name("COMMAND")
            ->expected(1)
            ->check(refuseOtherCommands, "");
    std::vector<std::string> words;
    words.reserve(std::size(collectingCommands));
    for (auto const & collecting : collectingCommands) {
        words.emplace_back(collecting.words);
    }
    declareValues(*option, words);
    if (of) {
        addObjects(*command, chosen, *of);
    } else {
        addTypes(*command, chosen);
    }
}

} // namespace vxshow::cli::command
