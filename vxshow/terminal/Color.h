#pragma once

#include <array>
#include <string>
#include <string_view>

/// Colour, as ECMA-48 (8.3.117, SGR) has it, and when it is used.
namespace vxshow::terminal {

/// What the user asked for. `automatic`: on a terminal that can show it.
enum class ColorChoice { automatic, always, never };

/// The word for each choice, in their order.
inline constexpr std::array<std::string_view, 3> colorWords{"auto", "always", "never"};

/// Whether what goes to `descriptor` has colour. `automatic`: if that is a terminal, `TERM` is set
/// and not "dumb", and `NO_COLOR` is not set or empty (https://no-color.org). Allocates nothing.
bool hasColor(ColorChoice choice, int descriptor) noexcept;

/// What a piece of text is.
enum class Kind { plain, header, total, remark, error };

/// The control sequence that begins the colour of `kind`; empty for plain text.
std::string_view colorOf(Kind kind) noexcept;

/// The control sequence that ends any colour.
inline constexpr std::string_view endOfColor = "\x1b[m";

/// `text`, which has no line end, in the colour of `kind`.
std::string colored(std::string_view text, Kind kind);

} // namespace vxshow::terminal
