#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A TOML document as a tree that records where each part was written.
///
/// Only one file includes the library that parses the text: it takes seconds to compile. It also
/// keeps a table in the order of its keys, while the first mistake to report is the first one in
/// the file.
namespace vxshow::text {

/// A document is refused. The message is one line of printable ASCII that begins with the place:
/// `LINE:COLUMN: …`.
class TomlRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where something begins: lines and columns count from 1, columns in characters.
struct TomlPlace {
    std::size_t line;
    std::size_t column;
};

struct TomlMember;

/// One value and the place of its first character. For a table with a header, that is the place of
/// the header; for the root, the start of the document.
struct TomlValue {
    using Array = std::vector<TomlValue>;
    using Table = std::vector<TomlMember>;

    /// A date, a time, or both: no setting takes one.
    struct Date {};

    TomlPlace place;
    std::variant<std::string, std::int64_t, double, bool, Date, Array, Table> content;
};

/// One key of a table, with its value.
struct TomlMember {
    std::string name;
    TomlPlace place; ///< of the key
    TomlValue value;
};

/// Reads a TOML 1.0 document. The members of each table are in the order in which they were
/// written. Raises `TomlRefusal` if the document is not TOML, or if it could take any amount of
/// memory or stack: more than 16 MiB, a line of more than 4096 bytes, or a value nested in more
/// than 8 others.
TomlValue readToml(std::string_view document);

} // namespace vxshow::text
