#pragma once

#include "Vex/String.h"

#include <stdexcept>
#include <string_view>

/// What goes wrong in the framework and its value types. A caller that only reports
/// catches `Error`; the kinds below it exist for those who answer them differently.
/// Every `what()` is one line of printable ASCII when it quotes through `quoted()`.
namespace [[gnu::visibility("default")]] Vex {

/// The base of every error that the framework raises.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A number outside the range of the type that was to hold it.
class RangeError : public Error {
public:
    using Error::Error;

    /// Reads as the `ParseError` of the same arguments.
    RangeError(std::string_view text, std::string_view expected);
};

/// A text that is not the text form of the type that was to be read from it.
class ParseError : public Error {
public:
    using Error::Error;

    /// Reads "'TEXT': expected EXPECTED". `text` is the offending text as it came, and is
    /// quoted; `expected` is the author's own words and is not.
    ParseError(std::string_view text, std::string_view expected);
};

/// Refuses `text` where a number `expected` is: with a `RangeError` when it is a decimal
/// number without leading zeros, which then can only be too great, else with a `ParseError`.
[[noreturn]] void refuseNumber(std::string_view text, std::string_view expected);

/// `text` as it may stand on a terminal or in a log: with every byte outside printable
/// ASCII written \xNN. Texts come from files and networks, so they may hold a terminal's
/// control sequences, and bytes from 0x80 up can start one too.
String printable(std::string_view text);

/// `text` as it may stand in a message: printable, in single quotes, with the quote and the
/// backslash escaped by a backslash. Beyond 60 bytes the text is cut, and three dots follow
/// the closing quote.
String quoted(std::string_view text);

} // namespace Vex
