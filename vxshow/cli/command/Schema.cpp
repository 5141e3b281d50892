#include "Vex/Errors.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/SchemaTexts.h"

#include "outfmt/OutputBuffer.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

namespace vxshow::cli::command {

namespace {

std::string schemaNames(std::string_view between) {
    std::string names;
    for (SchemaText const & schema : schemaTexts) {
        names.append(names.empty() ? "" : between).append(schema.name);
    }
    return names;
}

/// The text of a schema; raises the command-line library's error if there is none of this name.
std::string schemaNamed(std::string const & name) {
    auto const * const found =
        std::find_if(std::begin(schemaTexts), std::end(schemaTexts),
                     [&](SchemaText const & schema) { return schema.name == name; });
    if (found == std::end(schemaTexts)) {
        throw CLI::ValidationError("schema",
                                   Vex::quoted(name) + ": expected one of " + schemaNames(", "));
    }
    return std::string(found->text);
}

} // namespace

void addSchema(CLI::App & app, CommandLine & chosen) {
    auto * command =
        app.add_subcommand("schema", "The JSON Schema of a listing's JSON, or of its rows");
    command->fallthrough();
    auto const name = std::make_shared<std::string>();
    auto const * option =
        command
            ->add_option("NAME", *name,
                         "mac-received: of its document; mac-received.row: of its rows in JSON "
                         "lines; without a name, the names of all")
            ->type_name("");
    command->callback([&chosen, name, option] {
        auto const text = option->count() > 0 ? schemaNamed(*name) : schemaNames("\n") + "\n";
        chosen.command = "schema";
        chosen.readsState = false;
        chosen.draws = false;
        chosen.render = [text](state::Mount const &, int fd, Output const &) {
            outfmt::OutputBuffer buffer(fd, outfmt::OutputBuffer::Parting::lineEnds);
            buffer.append(text);
            buffer.flush();
        };
    });
}

} // namespace vxshow::cli::command
