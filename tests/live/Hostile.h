#pragma once

#include <ostream>
#include <string>

/// What a hostile peer does, and how the reason begins that is told of it. Its time limit, in
/// seconds, is short where it is to be reached, and long where another reason is to be told
/// first.
struct Hostile {
    char const * behaviour;
    char const * reason;
    unsigned timeLimit = 30;

    std::string timeLimitLine() const { return "time_limit = " + std::to_string(timeLimit); }
};

inline void PrintTo(Hostile const & hostile, std::ostream * out) {
    *out << hostile.behaviour;
}
