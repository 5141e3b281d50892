#pragma once

#include "vxshow/text/Toml.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::text {

/// A value of a document and the path to it, which a refusal of it names:
/// `LINE:COLUMN: KEY: found WHAT, expected WHAT`.
///
/// `expected` is a phrase in terms that the author knows, such as "an array of remotes".
class TomlField {
public:
    /// The root of a document.
    explicit TomlField(TomlValue const & root) : value_(&root) {}

    /// `LINE:COLUMN: KEY`; without the key at the root.
    std::string where() const;

    /// Raises a `TomlRefusal` that names the value as what was found.
    [[noreturn]] void refuse(std::string_view expected) const;

    /// As above, with `found` for what was found.
    [[noreturn]] void refuse(std::string_view found, std::string_view expected) const;

    /// The value if it has this type; otherwise raises `TomlRefusal`.
    std::string const & text(std::string_view expected) const;
    bool boolean(std::string_view expected) const;
    std::int64_t integer(std::string_view expected) const;
    /// Accepts an integer, too.
    double number(std::string_view expected) const;
    std::vector<TomlField> elements(std::string_view expected) const;
    TomlValue::Table const & table(std::string_view expected) const;

    /// The text that the value is; null if it is of another type.
    std::string const * findText() const noexcept;

    bool isTable() const noexcept;

    /// The member `name` of this table; nullopt if there is none, or if this is not a table.
    std::optional<TomlField> find(std::string_view name) const;

    /// As `find`, but raises `TomlRefusal` if there is none:
    /// `found a table, expected "name" in it`.
    TomlField required(std::string_view name) const;

    /// The field of `member`, which must be a member of this table.
    TomlField at(TomlMember const & member) const;

    /// Raises a `TomlRefusal` at the key of `member`, which must be a member of this table:
    /// `found "NAME", expected WHAT`, with `note` right after the name.
    [[noreturn]] void refuseKey(TomlMember const & member, std::string_view note,
                                std::string_view expected) const;

private:
    TomlField(TomlValue const & value, std::string key) : value_(&value), key_(std::move(key)) {}

    template <class Type>
    Type const & as(std::string_view expected) const;

    TomlValue const * value_;
    std::string key_; ///< such as `source[0].remotes[1]`; empty at the root
};

} // namespace vxshow::text
