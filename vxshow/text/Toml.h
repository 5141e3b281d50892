#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A TOML document as a tree that knows where everything in it was written.
///
/// The library that reads the text is seen in one file only: it takes seconds to compile, and
/// keeps a table in the order of its keys, while the first mistake to report is the first one
/// in the file.
namespace vxshow::text {

/// A document that is refused. Its text is one line of printable ASCII that begins with the
/// place: `LINE:COLUMN: …`.
class TomlRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where something begins: lines and columns from 1, columns in characters.
struct TomlPlace {
    std::size_t line;
    std::size_t column;
};

struct TomlMember;

/// One value and the place of its first character; of a table that has a header, the place of
/// that, and of the root, the start of the document.
struct TomlValue {
    using Array = std::vector<TomlValue>;
    using Table = std::vector<TomlMember>;

    /// A date, a time, or both: nothing that is configured here is one.
    struct Date {};

    TomlPlace place;
    std::variant<std::string, std::int64_t, double, bool, Date, Array, Table> content;
};

/// What a table has under one of its keys.
struct TomlMember {
    std::string name;
    TomlPlace place; ///< of the key
    TomlValue value;
};

/// Reads a document of TOML 1.0. The members of each table are in the order in which they
/// were written. Raises `TomlRefusal` for what is no TOML, and for what could take any amount of
/// memory or stack: more than 16 MiB, a line of more than 4096 bytes, or a value in more than
/// 8 others.
TomlValue readToml(std::string_view document);

} // namespace vxshow::text
