#pragma once

#include "vxshow/text/Toml.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::text {

/// A value of a document together with the way to it, and so with what a refusal of it says:
/// `LINE:COLUMN: KEY: found WHAT, expected WHAT`.
///
/// What is `expected` is the author's own words: a phrase such as "an array of remotes".
class TomlField {
public:
    /// The root.
    explicit TomlField(TomlValue const & root) : value_(&root) {}

    /// Raises `TomlRefusal`, with the value as what was found.
    [[noreturn]] void refuse(std::string_view expected) const;

    /// As above, in other words for what was found.
    [[noreturn]] void refuse(std::string_view found, std::string_view expected) const;

    /// The value when it is of that type; raises `TomlRefusal` when it is of another.
    std::string const & text(std::string_view expected) const;
    bool boolean(std::string_view expected) const;
    /// An integer, too.
    double number(std::string_view expected) const;
    std::vector<TomlField> elements(std::string_view expected) const;
    TomlValue::Table const & table(std::string_view expected) const;

    /// What the table has under `name`, if that is there. Nothing in what is no table.
    std::optional<TomlField> find(std::string_view name) const;

    /// As `find`; raises `TomlRefusal` where there is nothing: `found a table, expected "name"
    /// in it`.
    TomlField required(std::string_view name) const;

    /// `member`, which is one of the table's.
    TomlField at(TomlMember const & member) const;

    /// Raises `TomlRefusal` with the place of the key of `member`, one of the table's:
    /// `found "NAME", expected WHAT`, the words `note` behind the name.
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
