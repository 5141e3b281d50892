#pragma once

#include "vxshow/cli/filter/FilterValues.h"
#include "vxshow/state/narrow/NamePatterns.h"

#include <string>
#include <string_view>

namespace vxshow::cli::filter {

/// A filter by name: names, and patterns with `*` and `?`.
///
/// `name:TEXT` is the name TEXT as it is: commas, `*` and `?` have no meaning in it, nor has a word
/// such as `all`.
struct NameFilter {
    std::string one = {}; ///< empty: every name
    state::narrow::NamePatterns many = {};

    bool isNone() const noexcept { return one.empty() && many.empty(); }

    /// All that was typed, as one set.
    state::narrow::NamePatterns all() const;
};

/// Reads names. A single empty text lets every name through. Raises `ValueError` for an empty name
/// in a list.
NameFilter readNames(Texts const & texts);

/// The sources of `mac received`: switches by name, and the words `all` (every switch), `hsc`,
/// `qvx` and `evpn`.
struct SourceFilter {
    /// The word or name that goes to the library; empty: every source, unless there is a list.
    std::string one = {};
    bool isList = false;
    /// Of a list.
    state::narrow::NamePatterns switches = {};
    bool everySwitch = false;
    bool hsc = false;
    bool qvx = false;
    bool evpn = false;

    bool takesSwitch(std::string_view name) const { return everySwitch || switches.contains(name); }

    /// Whether the source that is mounted under that name, "HSC", is in the list.
    bool takesSource(std::string_view name) const;

    /// The switches that were asked for by name or pattern.
    state::narrow::NamePatterns askedSwitches() const;
};

/// As `readNames`.
SourceFilter readSources(Texts const & texts);

} // namespace vxshow::cli::filter
