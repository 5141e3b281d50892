#include "vxshow/cli/completion/TypedWords.h"

#include <algorithm>
#include <cstdlib>

namespace vxshow::cli::completion {

namespace {

/// A path that the shell has not expanded yet.
std::string expanded(std::string const & path) {
    char const * const home = std::getenv("HOME");
    return path.starts_with("~/") && home ? home + path.substr(1) : path;
}

bool takesValue(CLI::Option const & option) {
    return option.get_items_expected_max() > 0;
}

} // namespace

CLI::App * commandBelow(CLI::App & app, std::string const & word) {
    auto const found =
        app.get_subcommands([&](CLI::App * below) { return below->get_name() == word; });
    return found.empty() ? nullptr : found.front();
}

TypedWords::TypedWords(CLI::App & app, std::vector<std::string> const & words)
    : app_(&app), command_(&app) {
    for (std::string const & word : words) {
        if (awaiting_) {
            given_[awaiting_].push_back(word);
            listed_ = awaiting_->get_allow_extra_args() ? awaiting_ : nullptr;
            awaiting_ = nullptr;
        } else if (word.starts_with("-") && word.size() > 1) {
            readOption(word);
        } else if (auto * below = commandBelow(*command_, word)) {
            command_ = below;
            listed_ = nullptr;
            arguments_ = 0;
        } else if (listed_) {
            given_[listed_].push_back(word);
        } else {
            ++arguments_;
        }
    }
}

void TypedWords::readOption(std::string const & word) {
    listed_ = nullptr;
    auto const sign = word.find('=');
    auto * const option = optionNamed(word.substr(0, sign));
    if (!option) {
        return;
    }
    auto & values = given_[option];
    if (sign != std::string::npos) {
        values.push_back(word.substr(sign + 1));
    } else if (takesValue(*option)) {
        awaiting_ = option;
    }
}

CLI::Option * TypedWords::nextArgument() const {
    std::size_t before = 0;
    for (auto * option : command_->get_options([](CLI::Option *) { return true; })) {
        if (option->get_positional() && before++ == arguments_) {
            return option;
        }
    }
    return nullptr;
}

CLI::Option * TypedWords::optionNamed(std::string const & name) const {
    for (auto * command = command_; command; command = command->get_parent()) {
        if (auto * option = command->get_option_no_throw(name)) {
            return option;
        }
    }
    return nullptr;
}

bool TypedWords::refuses(CLI::Option const & option) const {
    bool const isRepeatable = option.get_multi_option_policy() != CLI::MultiOptionPolicy::Throw ||
                              option.get_items_expected_max() > 1;
    if (given_.count(&option) > 0 && !isRepeatable) {
        return true;
    }
    auto const excluded = option.get_excludes();
    return std::any_of(excluded.begin(), excluded.end(),
                       [&](CLI::Option const * other) { return given_.count(other) > 0; });
}

std::vector<std::string> const & TypedWords::valuesOf(char const * name) const {
    static std::vector<std::string> const none;
    auto const found = given_.find(app_->get_option(name));
    return found == given_.end() ? none : found->second;
}

StateOptions TypedWords::stateOptions() const {
    StateOptions options;
    auto const path = [&](char const * name) {
        auto const & values = valuesOf(name);
        return values.empty() ? std::string() : expanded(values.back());
    };
    options.snapshotPath = path("--state");
    options.fabricPath = path("--fabric");
    auto const & names = valuesOf("--fabric-name");
    options.fabricName = names.empty() ? "" : names.back();
    options.tablesPath = path("--tables");
    options.databases = valuesOf("--ovsdb");
    options.frr = given_.count(app_->get_option("--frr")) > 0;
    return options;
}

} // namespace vxshow::cli::completion
