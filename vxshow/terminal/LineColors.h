#pragma once

#include "vxshow/terminal/Color.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vxshow::terminal {

/// How the lines of a listing are told apart, to colour them.
///
/// In the fixed text, a line above one of dashes is a header, and "Total ... : N" is a total. In
/// rows, the first line after an empty one is a header, with the indented ones that continue it. A
/// name in the listing that looks like that gets the colour, and nothing else of it.
enum class Coloring { none, fixedText, rows };

/// Tells the lines of one listing apart.
class LineKinds {
public:
    explicit LineKinds(Coloring coloring) : coloring_(coloring) {}

    /// What `line` is, which `next` follows; both are without their ends, and `next` is empty after
    /// the last line. To be called with one line after the other.
    Kind of(std::string_view line, std::string_view next);

private:
    Coloring coloring_;
    bool inHeader_ = true; ///< of rows
};

/// Colours the lines of a listing as it arrives.
class LineColors {
public:
    explicit LineColors(Coloring coloring) : coloring_(coloring), kinds_(coloring) {}

    /// The coloured lines that `text`, which a terminal can show, completes. A line is complete
    /// with the one after it.
    std::string take(std::string_view text);

    /// What is left, coloured.
    std::string finish();

private:
    Coloring coloring_;
    LineKinds kinds_;
    std::string left_;         ///< at most one whole line, and the beginning of the next
    std::size_t searched_ = 0; ///< in `left_`: no line after the first one ends before this
};

} // namespace vxshow::terminal
