#include "modelc/source/Spelling.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace modelc {

namespace {

/// Letters to insert, remove, replace or swap with their neighbour to turn one word into the
/// other (Damerau, 1964, each pair swapped once).
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> older;
    std::vector<std::size_t> old;
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        older = std::exchange(old, row);
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            bool const same = from[i - 1] == to[j - 1];
            row[j] = std::min({old[j - 1] + (same ? 0 : 1), old[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                row[j] = std::min(row[j], older[j - 2] + 1);
            }
        }
    }
    return row.back();
}

} // namespace

std::string didYouMean(std::string_view written, std::vector<std::string> const & known) {
    std::string_view nearest;
    std::size_t least = (written.size() < 3 ? written.size() / 2 : written.size() / 3) + 1;
    for (auto const & name : known) {
        // The last part alone may be what was meant: EthAddr for Nolt::EthAddr.
        std::size_t const colon = name.rfind("::");
        bool const lastPart =
            colon != std::string::npos && std::string_view(name).substr(colon + 2) == written;
        if (std::size_t const far = lastPart ? 0 : distance(written, name); far < least) {
            least = far;
            nearest = name;
        }
    }
    return nearest.empty() ? "" : "; did you mean '" + std::string(nearest) + "'?";
}

} // namespace modelc
