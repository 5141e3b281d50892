#pragma once

#include "Vex/Dir.h"
#include "Vex/Errors.h"

#include <optional>
#include <stdexcept>
#include <string>

/// The names of the per-VNI entries, when a command cannot take one of them for a VNI.
///
/// The name should be the VNI in decimal, but nothing in the published state makes it so. The
/// commands end with an error then that tells what is wrong with a number, but not which
/// entry has it: whoever publishes the state needs to know that, so it is looked for here.
namespace vxshow::cli::command {

/// What a command makes of a name that does not begin with a number.
enum class NoNumber { isZero, isAnError };

/// What is wrong with the first entry, by name, whose name the command cannot take:
/// "entry 'abc': found no number, expected a VNI in decimal". Nothing when it takes them all.
std::optional<std::string> misnamedEntry(Vex::Dir const & entries, NoNumber noNumber);

/// Calls `render`. An error that may come from the name of an entry is replaced with a
/// `std::runtime_error` that tells the entry, with the library's own words for it behind that
/// when they say more than the name of a function.
template <class Render>
void namingTheEntry(Vex::Ptr<Vex::Dir> const & entries, NoNumber noNumber, Render && render) {
    auto const rethrow = [&](std::string const & libraryWords) {
        if (auto const misnamed = entries ? misnamedEntry(*entries, noNumber) : std::nullopt) {
            throw std::runtime_error(*misnamed + libraryWords);
        }
        throw;
    };
    try {
        render();
    } catch (Vex::RangeError const & error) {
        rethrow(std::string(" (") + error.what() + ")");
    } catch (std::logic_error const &) { // of std::stoi
        rethrow("");
    }
}

} // namespace vxshow::cli::command
