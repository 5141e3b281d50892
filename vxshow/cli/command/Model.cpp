#include "vxshow/cli/command/ModelListing.h"

#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "vxshow/cli/command/Commands.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace vxshow::cli::command {

namespace {

std::string_view lastPart(std::string_view name) {
    auto const colons = name.rfind("::");
    return colons == std::string_view::npos ? name : name.substr(colons + 2);
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return lower;
}

/// The edit distance (Levenshtein): how many letters must be changed, added or removed to turn one
/// text into the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            std::size_t const change = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({change, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

/// A hint after an unknown name: the types that were probably meant if they are few, or how to list
/// all of them.
std::string hint(std::string_view typed) {
    constexpr std::size_t fewTypes = 4;
    constexpr std::size_t fewSlips = 2;
    std::string const sought = lowerCase(lastPart(typed));
    std::string near;
    std::size_t found = 0;
    for (auto const * type : Vex::typeTable()) {
        std::string const name = lowerCase(lastPart(type->name));
        if (distance(sought, name) <= fewSlips ||
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

void list(Vex::Type const * only, int fd, Output const & output) {
    outfmt::Printer printer(fd, static_cast<unsigned>(output.format), true, false, true, 0);
    try {
        if (output.format != Format::text) {
            renderTypesJson(printer, only ? ModelTypes{only} : Vex::typeTable());
        } else if (only) {
            printType(printer, *only);
        } else {
            printTypes(printer, Vex::typeTable());
        }
        printer.flush();
    } catch (outfmt::SigIntException const &) {
        // The listing ends here; the exit status shows that it was interrupted.
    }
}

} // namespace

void addModel(CLI::App & app, CommandLine & chosen) {
    auto * command =
        app.add_subcommand("model", "The types of the model that commands collect the state into");
    command->fallthrough();
    auto const typed = std::make_shared<std::string>();
    auto const * option =
        command
            ->add_option(
                "TYPE", *typed,
                "Only this type, with its attributes: MacVtep, or VxlanController::Cli::MacVtep")
            ->type_name("");
    // The name is looked up after the parsing, so that an unknown option is reported first.
    command->callback([&chosen, typed, option] {
        Vex::Type const * const only = option->count() > 0 ? &typeCalled(*typed) : nullptr;
        chosen.command = "model";
        chosen.readsState = false;
        chosen.draws = false;
        chosen.render = [only](state::Mount const &, int fd, Output const & output) {
            list(only, fd, output);
        };
    });
}

} // namespace vxshow::cli::command
