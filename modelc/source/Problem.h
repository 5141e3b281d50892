#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

namespace modelc {

/// A place in the model file. Lines and columns count from 1; a column is a byte, and a
/// tab is one column.
struct Location {
    unsigned line = 1;
    unsigned column = 1;

    auto operator<=>(Location const &) const = default;
};

/// One thing that is wrong with the model, and where.
struct Problem {
    Location at;
    std::string text;
};

/// Raised where reading cannot go on: a text that is no model has one problem only, since
/// whatever follows the first would be guesswork.
struct SyntaxError {
    Problem problem;
};

/// What the checks found. All of it is collected, so that one run tells everything.
class Problems {
public:
    void add(Location at, std::string text);

    bool none() const noexcept { return problems_.empty(); }

    /// One line for each, "FILE:LINE:COLUMN: TEXT", in the order of the file.
    std::string report(std::string_view file) const;

private:
    std::vector<Problem> problems_;
};

} // namespace modelc
