#pragma once

#include <stdexcept>

namespace vxshow::sources {

/// An answer of a source is malformed. The text is one line of printable ASCII: what was read,
/// where in it, what was found and what was expected.
class AnswerError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace vxshow::sources
