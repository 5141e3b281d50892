#pragma once

#include <stdexcept>

namespace vxshow::sources {

/// A source could not be read. The text is the reason: one line of printable ASCII without the
/// source's name, such as "unreachable: …", "time limit: no answer within 5 s",
/// "permission: …", "no such program: vtysh", "no such schema: …", "broken answer: …".
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// There was no answer within the time limit: "time limit: …".
class TimedOut : public Failure {
public:
    using Failure::Failure;
};

/// The source comes to more facts than are allowed: "too large: …".
class TooManyFacts : public Failure {
public:
    using Failure::Failure;
};

} // namespace vxshow::sources
