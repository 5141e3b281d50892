#include "vxshow/cli/ColorOption.h"

#include "Vex/Errors.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/config/Settings.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace vxshow::cli {

void addColorOption(CLI::App & app, terminal::ColorChoice & choice) {
    using terminal::colorWords;
    auto * const option =
        app.add_option_function<std::string>(
               "--color",
               [&choice](std::string const & typed) {
                   auto const found = std::find(colorWords.begin(), colorWords.end(), typed);
                   if (found == colorWords.end()) {
                       throw CLI::ValidationError(
                           "--color", Vex::quoted(typed) + ": expected auto, always or never");
                   }
                   choice = static_cast<terminal::ColorChoice>(found - colorWords.begin());
               },
               "Colour headers, totals and messages: auto, on terminals that show it, unless "
               "NO_COLOR is set; always; or never. A listing in a file or a pipe has none")
            ->type_name("WHEN");
    declareValues(*option, {colorWords.begin(), colorWords.end()});
}

terminal::ColorChoice configuredColor(std::string_view word) {
    using terminal::colorWords;
    static_assert(config::colorWords == colorWords);
    auto const * const found = std::find(colorWords.begin(), colorWords.end(), word);
    auto const choice = static_cast<terminal::ColorChoice>(found - colorWords.begin());
    char const * const refused = std::getenv("NO_COLOR");
    bool const isRefused = refused && *refused != '\0';
    return choice == terminal::ColorChoice::always && isRefused ? terminal::ColorChoice::automatic
                                                                : choice;
}

} // namespace vxshow::cli
