#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace modelc {

/// Generated code is laid out as the formatter would, so that it reads like the rest and no
/// build has to run the formatter.
inline constexpr std::size_t lineWidth = 100;

/// `head`, the items separated by commas, and `tail`, for a list in parentheses. It takes one
/// line if it fits, else as many items per line as fit, aligned after `head`; if one item is
/// too long for that, the items follow on separate lines, indented by four more blanks. Every
/// line is indented by `indent`, and the last one ends with a newline.
std::string wrapped(std::size_t indent, std::string const & head,
                    std::vector<std::string> const & items, std::string const & tail);

/// Like `wrapped`, for a function: its `result` takes a line of its own if it leaves too
/// little room.
std::string signature(std::size_t indent, std::string const & result, std::string const & name,
                      std::vector<std::string> const & parameters, std::string const & tail);

/// One statement of a function's body. If it is too long, it is broken after its `&&`, or else
/// between the arguments of its call.
std::string statement(std::size_t indent, std::string const & text);

/// The lines as a `///` comment, indented; empty if there are no lines.
std::string docComment(std::size_t indent, std::vector<std::string> const & lines);

/// `items` with `separator` between them.
std::string joined(std::vector<std::string> const & items, std::string_view separator);

} // namespace modelc
