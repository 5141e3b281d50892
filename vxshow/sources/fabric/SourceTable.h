#pragma once

#include "vxshow/sources/Source.h"
#include "vxshow/text/TomlField.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vxshow::sources::fabric {

/// The key that limits the facts of a source, in its table or, for all sources, outside of them.
inline constexpr std::string_view maxFactsKey = "max_facts";

/// The key for a time limit: of one source in its table, of all of them together outside of them.
inline constexpr std::string_view timeLimitKey = "time_limit";

/// Reads such a value: seconds, rounded to milliseconds. Raises `TomlRefusal`.
std::chrono::milliseconds readTimeLimit(text::TomlField const & field);

/// Reads `max_facts` of `table`: a whole number from 1 to 4294967295; nullopt if it is not there.
/// Raises `TomlRefusal`.
std::optional<std::size_t> readMaxFacts(text::TomlField const & table);

/// Reads one table `[[source]]` of a fabric file. Relative file names in it count from `folder`,
/// which ends in a slash. A source without a limit of its own can come to `maxFacts` facts. Raises
/// `TomlRefusal`, including for an unknown key.
Source readSourceTable(text::TomlField const & source, std::string const & folder,
                       std::size_t maxFacts);

} // namespace vxshow::sources::fabric
