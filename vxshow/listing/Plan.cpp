#include "vxshow/listing/Plan.h"

#include "Vex/Errors.h"

#include <algorithm>
#include <string_view>

namespace vxshow::listing {

namespace {

bool sameLetters(std::string_view a, std::string_view b) {
    auto const lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

std::optional<std::size_t> columnNamed(Table const & table, std::string_view name) {
    auto const found =
        std::find_if(table.columns.begin(), table.columns.end(), [&](Column const & column) {
            return sameLetters(column.key, name) || sameLetters(column.header, name);
        });
    return found == table.columns.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - table.columns.begin()));
}

/// "source, vni"; for several tables "source, vni (mac); source, vtepIp (flood)".
std::string columnsOf(Tables tables) {
    std::string text;
    for (Table const & table : tables) {
        text += text.empty() ? "" : "; ";
        for (Column const & column : table.columns) {
            text.append(&column == table.columns.data() ? "" : ", ").append(column.key);
        }
        if (tables.size() > 1) {
            text.append(" (").append(table.name).append(")");
        }
    }
    return text;
}

std::string_view withoutSign(std::string_view key) {
    return key.starts_with('-') ? key.substr(1) : key;
}

/// The names of one option, each to be a column.
struct Names {
    char const * option;
    std::vector<std::string> const & typed;
    bool canHaveSign;

    std::string_view columnOf(std::string const & name) const {
        return canHaveSign ? withoutSign(name) : std::string_view(name);
    }
};

/// Why these names are not columns of any of the tables; nullopt if each is.
std::optional<std::string> unknownColumn(Names const & names, Tables tables) {
    for (std::string const & name : names.typed) {
        if (std::none_of(tables.begin(), tables.end(), [&](Table const & table) {
                return columnNamed(table, names.columnOf(name)).has_value();
            })) {
            return std::string(names.option) + ": " + Vex::quoted(names.columnOf(name)) +
                   ": expected a column: " + columnsOf(tables);
        }
    }
    return std::nullopt;
}

/// The table with its columns; nullopt if it lacks one.
std::optional<TablePlan> planTable(Choice const & choice, Tables tables, std::size_t number) {
    TablePlan plan{number, {}, {}};
    Table const & table = tables[number];
    for (std::string const & name : choice.columns) {
        auto const column = columnNamed(table, name);
        if (!column) {
            return std::nullopt;
        }
        plan.columns.push_back(*column);
    }
    for (std::string const & key : choice.sort) {
        auto const column = columnNamed(table, withoutSign(key));
        if (!column) {
            return std::nullopt;
        }
        plan.sort.push_back({*column, key.starts_with('-')});
    }
    if (choice.columns.empty()) {
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            plan.columns.push_back(column);
        }
    }
    return plan;
}

/// The name of the first column that is chosen more than once.
std::optional<std::string_view> repeatedColumn(TablePlan const & plan, Table const & table) {
    for (auto column = plan.columns.begin(); column != plan.columns.end(); ++column) {
        if (std::find(plan.columns.begin(), column, *column) != column) {
            return table.columns[*column].key;
        }
    }
    return std::nullopt;
}

std::string namesOf(Tables tables) {
    std::string names;
    for (Table const & table : tables) {
        names.append(names.empty() ? "" : ", ").append(table.name);
    }
    return names;
}

} // namespace

std::variant<Plan, Misfit> planOf(Choice const & choice, Tables tables) {
    // What is searched: all tables, or the one that was named.
    std::size_t first = 0;
    std::size_t end = tables.size();
    if (!choice.table.empty()) {
        while (first < end && !sameLetters(tables[first].name, choice.table)) {
            ++first;
        }
        if (first == end) {
            return Misfit{"--table: " + Vex::quoted(choice.table) +
                          ": expected one of: " + namesOf(tables)};
        }
        end = first + 1;
    }
    auto const searched = tables.subspan(first, end - first);
    for (Names const & names :
         {Names{"--columns", choice.columns, false}, Names{"--sort", choice.sort, true}}) {
        if (auto line = unknownColumn(names, searched)) {
            return Misfit{*std::move(line)};
        }
    }
    Plan plan{choice.form, {}, choice.top, choice.count, choice.header};
    for (std::size_t number = first; number < end; ++number) {
        auto table = planTable(choice, tables, number);
        bool const isSurplus = choice.form == Form::csv && !plan.tables.empty();
        if (!table || isSurplus) {
            continue;
        }
        if (auto const twice = repeatedColumn(*table, tables[number])) {
            return Misfit{"--columns: " + Vex::quoted(*twice) +
                          ": given twice; expected each column once"};
        }
        plan.tables.push_back(*std::move(table));
    }
    if (plan.tables.empty()) {
        return Misfit{"--columns and --sort: no table has all of these columns; expected columns "
                      "of one table: " +
                      columnsOf(searched)};
    }
    return plan;
}

} // namespace vxshow::listing
