#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Drawing in place on a terminal, with the control functions of ECMA-48.
namespace vxshow::terminal {

struct ScreenSize {
    std::size_t lines;
    std::size_t columns;
};

/// The size of the terminal; 24 lines of 80 columns if it is not known.
ScreenSize screenSize(int descriptor);

/// The text that draws `title`, the `remarks` and the lines of `text` over the present screen,
/// from its top. Lines are cut at the right edge; those that do not fit are counted on the last
/// line ("... 4 lines more"). The screen's bottom line stays empty: the cursor waits there, so that
/// the next message has a line of its own. The text is shown as `TerminalText` says.
std::string drawScreen(std::string const & title, std::vector<std::string> const & remarks,
                       std::string_view text, ScreenSize size);

} // namespace vxshow::terminal
