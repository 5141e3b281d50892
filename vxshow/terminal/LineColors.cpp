#include "vxshow/terminal/LineColors.h"

#include <algorithm>
#include <utility>

namespace vxshow::terminal {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// A line of dashes and blanks.
bool isRule(std::string_view line) {
    return line.find('-') != std::string_view::npos &&
           line.find_first_not_of("- ") == std::string_view::npos;
}

/// "Total Mac Addresses for this criterion: 5". A row has a number or an address before its last
/// cell, so no name makes it look so.
bool isTotal(std::string_view line) {
    auto const colon = line.find(": ");
    if (!line.starts_with("Total ") || colon == std::string_view::npos) {
        return false;
    }
    auto const words = line.substr(0, colon);
    auto const number = line.substr(colon + 2);
    return !number.empty() && std::all_of(number.begin(), number.end(), isDigit) &&
           std::none_of(words.begin(), words.end(), isDigit);
}

} // namespace

Kind LineKinds::of(std::string_view line, std::string_view next) {
    switch (coloring_) {
    case Coloring::none:
        break;
    case Coloring::fixedText:
        if (isRule(next) && !isRule(line)) {
            return Kind::header;
        }
        return isTotal(line) ? Kind::total : Kind::plain;
    case Coloring::rows:
        bool const isHeader = inHeader_;
        inHeader_ = line.empty() || (inHeader_ && next.starts_with(' '));
        return isHeader && !line.empty() ? Kind::header : Kind::plain;
    }
    return Kind::plain;
}

std::string LineColors::take(std::string_view text) {
    if (coloring_ == Coloring::none) {
        return std::string(text);
    }
    left_.append(text);
    std::string out;
    std::size_t start = 0;
    auto end = left_.find('\n');
    while (end != std::string::npos) {
        auto const next = left_.find('\n', std::max(end + 1, searched_));
        if (next == std::string::npos) {
            break;
        }
        std::string_view const all = left_;
        out.append(colored(
            all.substr(start, end - start),
            kinds_.of(all.substr(start, end - start), all.substr(end + 1, next - end - 1))));
        out.push_back('\n');
        start = end + 1;
        end = next;
    }
    left_.erase(0, start);
    searched_ = left_.size();
    return out;
}

std::string LineColors::finish() {
    std::string const left = std::exchange(left_, {});
    auto const end = left.find('\n');
    if (end == std::string::npos) {
        return colored(left, kinds_.of(left, {}));
    }
    std::string_view const all = left;
    auto const line = all.substr(0, end);
    auto const next = all.substr(end + 1);
    auto out = colored(line, kinds_.of(line, next)).append("\n");
    return out.append(colored(next, kinds_.of(next, {})));
}

} // namespace vxshow::terminal
