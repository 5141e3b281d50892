#include "vxshow/terminal/PagerChoice.h"

#include "vxshow/system/ProgramPath.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

/// That it ends when the listing fits, shows control functions for colour, and leaves the listing
/// on the screen.
constexpr char const * lessOptions = "FRX";

/// Whether a shell would take `text` as words and nothing else.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view(" _-./+,:@%").find(c) != std::string_view::npos;
    });
}

std::vector<std::string> plainWords(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        auto const end = std::min(text.find(' '), text.size());
        if (end != 0) {
            words.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

/// Whether these options of less, in `LESS` or on its command line, have -R or -r among them.
bool letsColorThrough(std::string_view options) {
    return options.find_first_of("Rr") != std::string_view::npos;
}

std::optional<PagerChoice> started(std::vector<std::string> words) {
    auto const program = words.empty() ? system::ProgramPath() : system::findProgram(words.front());
    if (program.path.empty()) {
        return std::nullopt;
    }
    PagerChoice choice{program.path, std::move(words)};
    if (char const * const options = std::getenv("LESS")) {
        choice.showsColor =
            letsColorThrough(options) || choice.words.front() != "less" ||
            std::any_of(choice.words.begin() + 1, choice.words.end(), letsColorThrough);
    } else {
        choice.environment.push_back(std::string("LESS=") + lessOptions);
    }
    return choice;
}

} // namespace

std::optional<PagerChoice> choosePager(int descriptor,
                                       std::optional<std::string> const & configured) {
    char const * const terminal = std::getenv("TERM");
    if (!terminal || std::string_view(terminal) == "dumb" ||
        ::tcgetpgrp(descriptor) != ::getpgrp()) {
        return std::nullopt;
    }
    char const * const variable = std::getenv("PAGER");
    auto const typed = variable ? std::optional<std::string>(variable) : configured;
    if (!typed) {
        return started({"less", std::string("-") + lessOptions});
    }
    if (*typed == "cat") {
        return std::nullopt;
    }
    return isPlain(*typed) ? started(plainWords(*typed)) : started({"/bin/sh", "-c", *typed});
}

} // namespace vxshow::terminal
