#include "vxshow/text/Toml.h"

#include "Vex/Errors.h"
#include "vxshow/text/TomlCharacters.h"

// What is read here has at most four levels. The library applies the limit below to arrays and
// inline tables while it parses; the code in this file applies it to the tables of dotted keys and
// headers.
#define TOML_MAX_NESTED_VALUES 8
// The library asserts conditions that a document can break, such as that a key starts with a valid
// character, before it reports them as errors. A mistake in a file must not end the program, in any
// kind of build.
#define TOML_ASSERT(expression) static_assert(true)
#include <toml++/toml.h>

#include <algorithm>
#include <cstdio>

namespace vxshow::text {

namespace {

constexpr std::size_t longestDocument = std::size_t{16} << 20;

// A dotted key makes a table for each of its words, and the library frees nested tables
// recursively. So the limit on a line limits the stack.
constexpr std::size_t longestLine = 4096;

[[noreturn]] void refuse(TomlPlace place, std::string const & what) {
    throw TomlRefusal(std::to_string(place.line) + ":" + std::to_string(place.column) + ": " +
                      what);
}

[[noreturn]] void refuseLength(TomlPlace place, std::string const & found, std::size_t longest) {
    refuse(place, "found " + found + " bytes, expected at most " + std::to_string(longest));
}

void checkLengths(std::string_view document) {
    if (document.size() > longestDocument) {
        refuseLength({1, 1}, std::to_string(document.size()), longestDocument);
    }
    for (std::size_t start = 0, line = 1; start < document.size(); ++line) {
        auto const end = std::min(document.find('\n', start), document.size());
        if (end - start > longestLine) {
            refuseLength({line, 1}, "a line of " + std::to_string(end - start), longestLine);
        }
        start = end + 1;
    }
}

/// The place of the byte at `position`.
TomlPlace placeOf(std::string_view document, std::size_t position) {
    auto const before = document.substr(0, position);
    auto const lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    auto const line = before.substr(before.rfind('\n') + 1);
    auto const characters = std::count_if(line.begin(), line.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; // not a continuation byte
    });
    return {lines + 1, static_cast<std::size_t>(characters) + 1};
}

void checkCharacters(std::string_view document) {
    auto const found = misplacedNonAscii(document);
    if (!found) {
        return;
    }
    char byte[16];
    std::snprintf(byte, sizeof(byte), "0x%02x",
                  static_cast<unsigned>(static_cast<unsigned char>(document[*found])));
    refuse(placeOf(document, *found),
           std::string("found the byte ") + byte +
               ", expected ASCII outside strings and comments and after a backslash");
}

TomlPlace placeOf(toml::source_region const & region) {
    return {region.begin.line, region.begin.column};
}

bool isBefore(TomlPlace a, TomlPlace b) {
    return a.line != b.line ? a.line < b.line : a.column < b.column;
}

TomlValue valueOf(toml::node const & node, int level);

TomlValue::Array arrayOf(toml::array const & array, int level) {
    TomlValue::Array values;
    values.reserve(array.size());
    for (auto const & element : array) {
        values.push_back(valueOf(element, level));
    }
    return values;
}

TomlValue::Table tableOf(toml::table const & table, int level) {
    TomlValue::Table members;
    members.reserve(table.size());
    for (auto const & [key, value] : table) {
        members.push_back({std::string(key.str()), placeOf(key.source()), valueOf(value, level)});
    }
    std::sort(members.begin(), members.end(), [](TomlMember const & a, TomlMember const & b) {
        return isBefore(a.place, b.place);
    });
    return members;
}

TomlValue valueOf(toml::node const & node, int level) {
    auto const place = placeOf(node.source());
    if (level > TOML_MAX_NESTED_VALUES) {
        refuse(place, "found a value in too many others, expected at most " +
                          std::to_string(TOML_MAX_NESTED_VALUES) + " levels");
    }
    if (auto const * const text = node.as_string()) {
        return {place, text->get()};
    }
    if (auto const * const number = node.as_integer()) {
        return {place, number->get()};
    }
    if (auto const * const number = node.as_floating_point()) {
        return {place, number->get()};
    }
    if (auto const * const boolean = node.as_boolean()) {
        return {place, boolean->get()};
    }
    if (auto const * const array = node.as_array()) {
        return {place, arrayOf(*array, level + 1)};
    }
    if (auto const * const table = node.as_table()) {
        return {place, tableOf(*table, level + 1)};
    }
    return {place, TomlValue::Date()};
}

} // namespace

TomlValue readToml(std::string_view document) {
    checkLengths(document);
    checkCharacters(document);
    try {
        return valueOf(toml::parse(document), 0);
    } catch (toml::parse_error const & error) {
        refuse(placeOf(error.source()), std::string(Vex::printable(error.description())));
    }
}

} // namespace vxshow::text
