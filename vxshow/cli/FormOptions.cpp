#include "vxshow/cli/FormOptions.h"

#include "Vex/Errors.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/cli/NumberOption.h"
#include "vxshow/config/Settings.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <limits>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vxshow::cli {

namespace {

constexpr char const * rowForms = "-o wide, csv or jsonl";

std::optional<Format> libraryFormat(std::string_view form) {
    if (form == "text") {
        return Format::text;
    }
    if (form == "json") {
        return Format::compactJson;
    }
    return form == "pretty" ? std::optional(Format::indentedJson) : std::nullopt;
}

std::optional<listing::Form> rowForm(std::string_view form) {
    if (form == "wide") {
        return listing::Form::wide;
    }
    if (form == "csv") {
        return listing::Form::csv;
    }
    return form == "jsonl" ? std::optional(listing::Form::jsonLines) : std::nullopt;
}

std::string checkForm(std::string const & form) {
    return libraryFormat(form) || rowForm(form)
               ? ""
               : Vex::quoted(form) + ": expected text, json, pretty, wide, csv or jsonl";
}

std::string checkTable(std::string const & table) {
    return table.empty() ? "'': expected the name of a table" : "";
}

/// Adds an option for names of columns: it can be given several times, each time with several
/// names.
void addColumnNames(CLI::App & app, std::string const & name, std::string const & help,
                    std::string const & typeName, std::vector<std::string> & into) {
    app.add_option_function<std::vector<std::string>>(
           name,
           [name, &into](std::vector<std::string> const & values) {
               for (std::string_view rest : values) {
                   for (bool atEnd = false; !atEnd;) {
                       auto const comma = rest.find(',');
                       auto const column = rest.substr(0, comma);
                       if (column.empty() || column == "-") {
                           throw CLI::ValidationError(
                               name, "'': expected names of columns, with commas between them");
                       }
                       into.emplace_back(column);
                       atEnd = comma == std::string_view::npos;
                       rest.remove_prefix(atEnd ? rest.size() : comma + 1);
                   }
               }
           },
           help)
        ->type_name(typeName)
        ->expected(1)
        ->take_all();
}

/// The first option that only the forms with rows have; null if none was typed.
char const * rowOption(listing::Choice const & rows) {
    return !rows.table.empty()     ? "--table"
           : !rows.columns.empty() ? "--columns"
           : !rows.sort.empty()    ? "--sort"
           : rows.top              ? "--top"
           : rows.count            ? "--count"
           : !rows.header          ? "--no-header"
                                   : nullptr;
}

/// The form that was typed, in whichever way; empty if none was. `--json` and `--pretty` exclude
/// each other.
std::string formOf(FormOptions const & options) {
    return options.json ? "json" : options.pretty ? "pretty" : options.form;
}

} // namespace

void addFormOptions(CLI::App & app, FormOptions & options) {
    app.add_option("-o,--output", options.form,
                   "Form of the output: text (the default), json, pretty, wide, csv or jsonl")
        ->type_name("FORM")
        ->check(checkForm, "");
    declareValues(*app.get_option("-o"), {config::formWords.begin(), config::formWords.end()});
    auto * json = app.add_flag("--json", options.json, "JSON on one line: -o json");
    auto * pretty = app.add_flag("--pretty", options.pretty, "Indented JSON: -o pretty");
    json->excludes(pretty)->disable_flag_override();
    pretty->disable_flag_override();
    app.add_option("--table", options.rows.table, "With wide, csv or jsonl: only this table")
        ->type_name("TABLE")
        ->check(checkTable, "");
    addColumnNames(app, "--columns", "With wide, csv or jsonl: only these columns, in this order",
                   "COLUMN,...", options.rows.columns);
    addColumnNames(app, "--sort",
                   "With wide, csv or jsonl: sort by these columns, descending with a minus sign",
                   "[-]COLUMN,...", options.rows.sort);
    addNumber(app, "--top", 1, std::numeric_limits<Vex::U32>::max(),
              "With wide, csv or jsonl: at most the first N rows of a table",
              [&](Vex::U32 rows) { options.rows.top = rows; });
    app.add_flag("--count", options.rows.count,
                 "With wide, csv or jsonl: how many rows there are, instead of the rows")
        ->disable_flag_override();
    app.add_flag_callback(
           "--no-header", [&] { options.rows.header = false; },
           "With wide, csv or jsonl: without the line of titles")
        ->disable_flag_override();
}

std::optional<std::string> completeForm(FormOptions const & options, std::string const & command,
                                        listing::Tables tables, Output & output) {
    auto const typed = formOf(options);
    bool const isPreferred = typed.empty() && !(tables.empty() && rowForm(options.preferred));
    auto const form = isPreferred ? options.preferred : typed;
    if (!options.form.empty() && options.form != form) {
        return "-o " + options.form + " and --" + form + ": expected one of them";
    }
    auto const rows = rowForm(form);
    if (!rows) {
        output.format = libraryFormat(form).value_or(Format::text);
        auto const * const option = rowOption(options.rows);
        return option ? std::optional(std::string(option) + ": expected only with " + rowForms)
                      : std::nullopt;
    }
    if (tables.empty()) {
        return "-o " + form + ": not available for " + command;
    }
    auto choice = options.rows;
    choice.form = *rows;
    auto plan = listing::planOf(choice, tables);
    if (auto * misfit = std::get_if<listing::Misfit>(&plan)) {
        return std::move(misfit->line);
    }
    output.rows = std::get<listing::Plan>(std::move(plan));
    return std::nullopt;
}

} // namespace vxshow::cli
