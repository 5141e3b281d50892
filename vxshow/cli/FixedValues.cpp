#include "vxshow/cli/FixedValues.h"

#include <string_view>

namespace vxshow::cli {

namespace {

/// The name of the validator that holds the values starts with this.
constexpr std::string_view mark = "values";

} // namespace

void declareValues(CLI::Option & option, std::vector<std::string> const & values) {
    // The library lists the validators of an option by name, and shows no name to the user.
    std::string name(mark);
    for (std::string const & value : values) {
        name.append("\n").append(value);
    }
    option.check([](std::string const &) { return std::string(); }, "", name);
}

std::vector<std::string> declaredValues(CLI::Option & option) {
    std::vector<std::string> values;
    try {
        for (int i = 0;; ++i) { // ends with an exception: the library does not count validators
            std::string_view rest = option.get_validator(i)->get_name();
            if (!rest.starts_with(mark)) {
                continue;
            }
            for (auto end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
                rest.remove_prefix(end + 1);
                values.emplace_back(rest.substr(0, rest.find('\n')));
            }
        }
    } catch (CLI::OptionNotFound const &) {
        return values;
    }
}

} // namespace vxshow::cli
