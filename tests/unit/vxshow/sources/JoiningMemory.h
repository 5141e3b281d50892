#pragma once

#include "vxshow/sources/Answer.h"

#include <cstddef>
#include <functional>
#include <string>

/// How much memory it takes to make facts of an answer.
namespace vxshow::test {

/// The bounds that docs/sources.md states.
inline constexpr std::size_t mostBytesOfAnswerByte = 20;
inline constexpr std::size_t mostBytesOfFact = 128;

/// How many facts these are, as a limit counts them, but repetitions left out.
std::size_t countOf(sources::Facts const & facts);

/// Reads `answer` and expects that joining takes no more than the bounds say. The answer itself,
/// and the parser's index of it, are not counted. `shape` names the answer in messages; the figures
/// are recorded as properties of the test (`--gtest_output=json`).
void expectWithinBounds(std::string const & shape, std::string const & answer,
                        std::function<sources::Answer(std::string const &)> const & read);

} // namespace vxshow::test
