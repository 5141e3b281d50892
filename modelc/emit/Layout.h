#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace modelc {

/// Generated code is laid out as the formatter would lay it out, so that it reads like the
/// rest and nobody has to run the formatter during a build.
inline constexpr std::size_t lineWidth = 100;

/// `head` + items, separated by commas + `tail`, for a list in parentheses: on one line
/// when it fits, else as many items on a line as fit, aligned behind `head`; when one item
/// alone is too long for that, on lines of their own, indented by four blanks more.
/// Every line is indented by `indent`; the last one has its line end, too.
std::string wrapped(std::size_t indent, std::string const & head,
                    std::vector<std::string> const & items, std::string const & tail);

/// The same for a function: its `result`, when it leaves too little room, takes a line.
std::string signature(std::size_t indent, std::string const & result, std::string const & name,
                      std::vector<std::string> const & parameters, std::string const & tail);

/// One statement of a function's body. One that is too long is broken behind its `&&`, or
/// else between the arguments of its call.
std::string statement(std::size_t indent, std::string const & text);

/// Each line behind `///`, indented. No lines are no comment.
std::string docComment(std::size_t indent, std::vector<std::string> const & lines);

/// `items` with `separator` between them.
std::string joined(std::vector<std::string> const & items, std::string_view separator);

} // namespace modelc
