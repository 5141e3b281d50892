#pragma once

#include <ostream>
#include <string>

/// What a hostile peer does, and how the reported reason begins. Its time limit, in seconds, is
/// short if it is meant to be reached, and long if another reason is to be reported first.
struct Hostile {
    char const * behaviour;
    char const * reason;
    unsigned timeLimit = 30;

    std::string timeLimitLine() const { return "time_limit = " + std::to_string(timeLimit); }
};

inline void PrintTo(Hostile const & hostile, std::ostream * out) {
    *out << hostile.behaviour;
}
