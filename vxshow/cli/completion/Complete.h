#pragma once

#include <string>

namespace vxshow::cli::completion {

/// Whether the arguments of `main` are those that a completion script gives: `complete` and the
/// name of a shell.
bool isAsked(int argc, char const * const * argv);

/// The answer to such a script. In the first line `words`, `files` or `directories`, what is
/// expected next; then, of words, one in each line:
///
///     vxshow complete bash BREAKS LINE       what replaces the text before the cursor, quoted
///     vxshow complete zsh -- WORD... WORD    the word, a tab, its description
///     vxshow complete fish -- WORD... TOKEN  as for zsh
///
/// BREAKS is COMP_WORDBREAKS, LINE the line up to the cursor with the program's name, WORD is
/// without quotes and TOKEN the last word as typed. Other arguments are answered with nothing. If
/// it takes more than 150 ms of processor time, the process ends without an answer.
std::string answer(int argc, char const * const * argv);

} // namespace vxshow::cli::completion
