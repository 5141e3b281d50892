#include "vxshow/cli/NumberOption.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <charconv>

namespace vxshow::cli {

void addNumber(CLI::App & app, std::string const & name, Vex::U32 low, Vex::U32 high,
               std::string const & help, std::function<void(Vex::U32)> const & store,
               std::string const & meaning) {
    app.add_option_function<std::string>(
           name,
           [=](std::string const & text) {
               Vex::U32 number = 0;
               char const * const end = text.data() + text.size();
               auto const [stop, error] = std::from_chars(text.data(), end, number);
               if (text.empty() || stop != end || error != std::errc() || number < low ||
                   number > high) {
                   throw CLI::ValidationError(
                       name, "'" + text + "': expected a whole number from " + std::to_string(low) +
                                 " to " + std::to_string(high) + meaning);
               }
               store(number);
           },
           help)
        ->type_name("N");
}

} // namespace vxshow::cli
