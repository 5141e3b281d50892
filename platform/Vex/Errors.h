#pragma once

#include "Vex/String.h"

#include <stdexcept>
#include <string_view>

/// The errors of the framework and its value types. A caller that only reports errors
/// catches `Error`; the classes derived from it are for callers that handle them
/// differently. Every `what()` that quotes with `quoted()` is one line of printable
/// ASCII.
namespace [[gnu::visibility("default")]] Vex {

/// The base of every error that the framework raises.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A number outside the range of the type it was read for.
class RangeError : public Error {
public:
    using Error::Error;

    /// Has the same text as a `ParseError` with these arguments.
    RangeError(std::string_view text, std::string_view expected);
};

/// A text that is not a text form of the type it was read for.
class ParseError : public Error {
public:
    using Error::Error;

    /// Reads "'TEXT': expected EXPECTED". `text` is the invalid input, which is quoted
    /// here; `expected` is the program's own wording and is not.
    ParseError(std::string_view text, std::string_view expected);
};

/// Refuses `text`, which is not the number that `expected` describes: with a `RangeError` if
/// it is a decimal number without leading zeros, which then must be too large, otherwise
/// with a `ParseError`.
[[noreturn]] void refuseNumber(std::string_view text, std::string_view expected);

/// `text` made safe for a terminal or a log: every byte outside printable ASCII is
/// written \xNN. Text from files and networks can hold a terminal's control sequences,
/// and bytes from 0x80 up can start one too.
String printable(std::string_view text);

/// `text` quoted for a message: printable, in single quotes, with quotes and backslashes
/// escaped by a backslash. Text beyond 60 bytes is cut, and three dots follow the closing
/// quote.
String quoted(std::string_view text);

} // namespace Vex
