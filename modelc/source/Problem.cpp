#include "modelc/source/Problem.h"

#include <algorithm>
#include <utility>

namespace modelc {

void Problems::add(Location at, std::string text) {
    problems_.push_back({at, std::move(text)});
}

std::string Problems::report(std::string_view file) const {
    auto ordered = problems_;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](Problem const & a, Problem const & b) { return a.at < b.at; });
    std::string text;
    for (auto const & problem : ordered) {
        text.append(file).append(":").append(std::to_string(problem.at.line)).append(":");
        text.append(std::to_string(problem.at.column)).append(": ").append(problem.text);
        text.append("\n");
    }
    return text;
}

} // namespace modelc
