#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

namespace modelc {

/// A position in the model file. Lines and columns are counted from 1; every byte is one
/// column, a tab too.
struct Location {
    unsigned line = 1;
    unsigned column = 1;

    auto operator<=>(Location const &) const = default;
};

/// One error in the model, and its location.
struct Problem {
    Location at;
    std::string text;
};

/// Thrown when parsing cannot continue. A syntax error is reported alone, since any error
/// after it would be guesswork.
struct SyntaxError {
    Problem problem;
};

/// Collects the errors that the checks find, so that one run reports all of them.
class Problems {
public:
    void add(Location at, std::string text);

    bool empty() const noexcept { return problems_.empty(); }

    /// One line per error, "FILE:LINE:COLUMN: TEXT", in file order.
    std::string report(std::string_view file) const;

private:
    std::vector<Problem> problems_;
};

} // namespace modelc
