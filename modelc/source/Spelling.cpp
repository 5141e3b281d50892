#include "modelc/source/Spelling.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace modelc {

namespace {

/// The number of letters to insert, remove, replace or swap with their neighbour that turns
/// one word into the other (Damerau, 1964; each pair is swapped at most once).
std::size_t editDistance(std::string_view from, std::string_view to) {
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
    std::string_view closest;
    std::size_t least = (written.size() < 3 ? written.size() / 2 : written.size() / 3) + 1;
    for (auto const & name : known) {
        // The namespace may have been left out: EthAddr for Nolt::EthAddr.
        std::size_t const colon = name.rfind("::");
        bool const lastPart =
            colon != std::string::npos && std::string_view(name).substr(colon + 2) == written;
        if (auto const distance = lastPart ? 0 : editDistance(written, name); distance < least) {
            least = distance;
            closest = name;
        }
    }
    return closest.empty() ? "" : "; did you mean '" + std::string(closest) + "'?";
}

} // namespace modelc
