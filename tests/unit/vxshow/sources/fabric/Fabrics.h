#pragma once

#include "vxshow/sources/Access.h"
#include "vxshow/sources/Source.h"

#include <string>
#include <string_view>
#include <vector>

namespace vxshow::test {

/// The sources in a fabric file with that text.
std::vector<sources::Source> fabricOf(std::string_view text);

/// The only source in a fabric file with that text.
sources::Source sourceOf(std::string_view text);

/// The access of a source of that kind. Throws `std::bad_cast` if it is of another.
template <class KindAccess>
KindAccess const & accessOf(sources::Source const & source) {
    return dynamic_cast<KindAccess const &>(*source.access);
}

/// Why that text is refused, from the line number on; an empty text if it is not.
std::string refusalOf(std::string_view text);

/// A source of kind "frr" on lines 1 to 3, with `lines` from line 4 on.
std::string frr(std::string_view lines);

/// A source of kind "hardware_vtep" on lines 1 to 4, with `lines` from line 5 on.
std::string database(std::string_view lines);

/// A database whose key `remotes` has that value, on line 4, with `lines` from line 5 on.
std::string databaseAt(std::string_view remotes, std::string_view lines = "");

} // namespace vxshow::test
