#pragma once

#include "vxshow/listing/Plan.h"
#include "vxshow/listing/Shown.h"

namespace vxshow::listing {

/// The same rows, sorted by `sort` and then limited to the first `top`.
///
/// Rows that are equal in all keys keep their order. Values are ordered as what they are: numbers,
/// addresses and VNIs by their value, names by their bytes. Unknown values come last in either
/// direction.
///
/// Unsorted rows are passed on as they come. Sorted ones are collected when this is called: all of
/// them, or with `top` no more than a multiple of it at a time. Then the rows must stay valid as
/// long as what is returned. Raises `outfmt::SigIntException` on the user's interrupt.
Walk arranged(Walk const & walk, std::vector<SortKey> const & sort, std::optional<Vex::U32> top);

} // namespace vxshow::listing
