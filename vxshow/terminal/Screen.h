#pragma once

#include "vxshow/terminal/LineColors.h"
#include "vxshow/terminal/TerminalText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Drawing in place on a terminal, with the control functions of ECMA-48.
namespace vxshow::terminal {

struct ScreenSize {
    std::size_t lines;
    std::size_t columns;
};

/// How a remark on what could not be read again begins.
inline constexpr std::string_view staleWords = "STALE since ";

/// The size of the terminal; 24 lines of 80 columns if it is not known.
ScreenSize screenSize(int descriptor);

/// One picture of the screen.
struct Drawing {
    std::string text;          ///< what draws it
    std::size_t page = 1;      ///< how many lines of the listing are on it, at least 1
    std::size_t lastStart = 0; ///< the line of the listing from which the rest of it fits
};

/// Draws `title`, the `remarks` and the lines of `text` from the line `start` on over the present
/// screen, from its top. Lines are cut at the right edge. Remarks take at most a third of the
/// screen; those that do not fit are counted. If not all lines of the text fit, the last line says
/// which do ("... 4 lines more", "lines 5 to 9 of 20"). The screen's bottom line stays empty: the
/// cursor waits there, so that the next message has a line of its own. The text is shown as
/// `TerminalText` says. With `coloring`, lines have the colours of what they are.
Drawing drawScreen(std::string const & title, std::vector<std::string> const & remarks,
                   std::string_view text, ScreenSize size, Tables tables = Tables::aligned,
                   std::size_t start = 0, std::optional<Coloring> coloring = {});

} // namespace vxshow::terminal
