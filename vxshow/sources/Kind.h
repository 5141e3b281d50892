#pragma once

#include "vxshow/sources/Access.h"
#include "vxshow/text/TomlField.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace vxshow::sources {

/// A kind of source, as a fabric file describes it. A new kind has a folder of its own, an entry
/// in `fabric::kinds()` and a section in docs/fabric.md; nothing else knows of it.
struct Kind {
    /// The value of `kind` in its table `[[source]]`.
    std::string_view name;
    /// The keys of that table that only some kinds have.
    std::span<std::string_view const> keys;
    /// Reads these keys. Relative file names in them count from `folder`, which ends in a slash.
    /// Raises `TomlRefusal`.
    std::shared_ptr<Access const> (*readAccess)(text::TomlField const & table,
                                                std::string const & folder);
};

} // namespace vxshow::sources
