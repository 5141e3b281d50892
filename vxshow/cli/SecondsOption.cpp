#include "vxshow/cli/SecondsOption.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <charconv>
#include <cmath>

namespace vxshow::cli {

void addSeconds(CLI::App & app, std::string const & name, std::string const & help,
                std::function<void(std::chrono::milliseconds)> const & store) {
    constexpr double least = 0.001;
    constexpr double most = 3600;
    app.add_option_function<std::string>(
           name,
           [=](std::string const & text) {
               double seconds = 0;
               char const * const end = text.data() + text.size();
               auto const [stop, error] =
                   std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
               // Written so that NaN fails it.
               if (error != std::errc() || stop != end || !(seconds >= least && seconds <= most)) {
                   throw CLI::ValidationError(name, "'" + text +
                                                        "': expected seconds, from 0.001 to 3600");
               }
               store(std::chrono::milliseconds(std::llround(seconds * 1000)));
           },
           help)
        ->type_name("SECONDS");
}

} // namespace vxshow::cli
