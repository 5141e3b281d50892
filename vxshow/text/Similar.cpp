#include "vxshow/text/Similar.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace vxshow::text {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return lower;
}

std::size_t editDistance(std::string_view a, std::string_view b) {
    // Rows of the table of distances between beginnings of both: of `a` without its last two
    // bytes, without the last one, and whole.
    std::array<std::vector<std::size_t>, 3> rows;
    rows.fill(std::vector<std::size_t>(b.size() + 1));
    auto & [before, last, row] = rows;
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(before, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            bool const same = a[i - 1] == b[j - 1];
            row[j] = std::min({last[j - 1] + (same ? 0 : 1), last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
    }
    return row.back();
}

std::optional<std::string_view> mostSimilar(std::string_view typed,
                                            std::vector<std::string_view> const & candidates) {
    std::string const sought = lowerCase(typed);
    std::size_t least = std::max<std::size_t>(1, typed.size() / 3) + 1;
    std::optional<std::string_view> best;
    for (std::string_view const candidate : candidates) {
        std::size_t const longer = std::max(candidate.size(), typed.size());
        std::size_t const shorter = std::min(candidate.size(), typed.size());
        // The lengths alone are a lower bound.
        if (longer - shorter >= least || candidate == typed) {
            continue;
        }
        std::size_t const distance = editDistance(sought, lowerCase(candidate));
        // What has nothing in common with the name is no suggestion, however short both are.
        if (distance < least && distance < longer) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

} // namespace vxshow::text
