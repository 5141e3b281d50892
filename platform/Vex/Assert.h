#pragma once

/// An assertion that holds in every build.
///
/// For programming errors, such as an attribute printed before it has a value, or text
/// read as a type that has no reader: no caller could handle them, and a release build
/// that went on would print rubbish that looks like state.
namespace [[gnu::visibility("default")]] Vex {

/// Writes "FILE:LINE: FUNCTION: assertion 'EXPRESSION' failed" to standard error and
/// aborts. FILE is shown by its base name.
[[noreturn]] void assertionFailed(char const * expression, char const * file, int line,
                                  char const * function) noexcept;

/// Does nothing if `holds`; otherwise ends the process as assertionFailed() does, naming
/// the caller's place.
inline void assertThat(bool holds, char const * expression, char const * file = __builtin_FILE(),
                       int line = __builtin_LINE(),
                       char const * function = __builtin_FUNCTION()) noexcept {
    if (!holds) [[unlikely]] {
        assertionFailed(expression, file, line, function);
    }
}

} // namespace Vex
