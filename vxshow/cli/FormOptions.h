#pragma once

#include "vxshow/cli/OutputOptions.h"
#include "vxshow/listing/Plan.h"
#include "vxshow/listing/TableColumns.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace vxshow::cli {

/// The form of the output, as typed.
struct FormOptions {
    std::string form;      ///< the value of -o
    std::string preferred; ///< the form of the configuration file, if no option says it
    bool json = false;
    bool pretty = false;
    listing::Choice rows;
};

/// Adds `-o`, `--json`, `--pretty` and the options of the forms that have rows. `options` must
/// outlive the parsing.
void addFormOptions(CLI::App & app, FormOptions & options);

/// Fills in the form and the rows of `output`. `tables` are those of the command `command`, none if
/// it lists nothing. A command without rows has the form `text` where one with rows is preferred.
/// Returns an error line if the options do not fit each other or the tables.
std::optional<std::string> completeForm(FormOptions const & options, std::string const & command,
                                        listing::Tables tables, Output & output);

} // namespace vxshow::cli
