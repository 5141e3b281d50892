#include "vxshow/cli/SizeOption.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

namespace vxshow::cli {

namespace {

/// How many bits the suffix shifts the number by; nullopt if there is no such suffix.
std::optional<unsigned> shiftOf(std::string_view suffix) {
    if (suffix.empty()) {
        return 0;
    }
    if (suffix == "K") {
        return 10;
    }
    if (suffix == "M") {
        return 20;
    }
    return suffix == "G" ? std::optional(30U) : std::nullopt;
}

std::optional<std::uint64_t> bytesOf(std::string const & text) {
    std::uint64_t number = 0;
    char const * const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, number);
    auto const shift = shiftOf({stop, static_cast<std::size_t>(end - stop)});
    bool const fits = shift && number <= std::numeric_limits<std::uint64_t>::max() >> *shift;
    if (error != std::errc() || !fits || number == 0) {
        return std::nullopt;
    }
    return number << *shift;
}

} // namespace

void addSize(CLI::App & app, std::string const & name, std::string const & help,
             std::function<void(std::uint64_t)> const & store) {
    app.add_option_function<std::string>(
           name,
           [=](std::string const & text) {
               auto const bytes = bytesOf(text);
               if (!bytes) {
                   throw CLI::ValidationError(
                       name, "'" + text +
                                 "': expected a number of bytes, such as 4096, 64K, 100M "
                                 "or 2G");
               }
               store(*bytes);
           },
           help)
        ->type_name("SIZE");
}

} // namespace vxshow::cli
