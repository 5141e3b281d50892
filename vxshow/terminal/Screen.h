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

/// The size of the terminal; 24 lines of 80 columns where it does not tell.
ScreenSize screenSize(int descriptor);

/// What draws `title`, the `remarks`, and the lines of `text` from the top of the screen over
/// what is there: each cut at the right edge, and those for which there is no room counted in
/// the last one. The last line of the screen stays empty: the cursor waits there, and what is
/// said next has a line of its own. Bytes that a terminal obeys stand as question marks.
std::string drawn(std::string const & title, std::vector<std::string> const & remarks,
                  std::string_view text, ScreenSize size);

} // namespace vxshow::terminal
