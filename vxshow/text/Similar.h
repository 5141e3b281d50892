#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::text {

/// The text with ASCII letters in lower case.
std::string lowerCase(std::string_view text);

/// The edit distance: how many bytes must be changed, added, removed or swapped with their
/// neighbour to turn one text into the other. Takes as many steps as the product of both lengths.
std::size_t editDistance(std::string_view a, std::string_view b);

/// The candidate that was probably meant by `typed`: the first of those with the least distance,
/// if that is at most a third of what was typed, and at least 1. Upper and lower case are the same
/// here. nullopt if no other candidate than `typed` itself is similar.
std::optional<std::string_view> mostSimilar(std::string_view typed,
                                            std::vector<std::string_view> const & candidates);

} // namespace vxshow::text
