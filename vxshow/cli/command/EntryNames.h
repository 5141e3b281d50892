#pragma once

#include "Vex/Dir.h"
#include "Vex/Errors.h"
#include "Vex/Reinstantiation.h"
#include "Vxlan/Vni.h"

#include <optional>
#include <stdexcept>
#include <string>

/// Error messages for per-VNI entries whose name is not a VNI.
///
/// The name should be the VNI in decimal, but the published state does not guarantee that. The
/// library then raises an error about the number, without the entry that has it. The publisher of
/// the state needs to know the entry, so it is searched for here.
namespace vxshow::cli::command {

/// How a command treats a name that does not begin with a number.
enum class NoNumber { isZero, isAnError };

/// The VNI of the entry `name` as a command reads it: blanks and a sign can precede the number,
/// anything can follow it. nullopt if the command refuses the name.
std::optional<Vxlan::Vni> vniOfEntryName(std::string const & name, NoNumber noNumber);

/// What is wrong with the first entry, in the order of the names, whose name the command refuses:
/// "entry 'abc': found no number, expected a VNI in decimal". nullopt if it accepts all names.
std::optional<std::string> firstInvalidEntryName(Vex::Dir const & entries, NoNumber noNumber);

/// Calls `render`. An error that can be caused by the name of an entry is replaced with a
/// `std::runtime_error` that names the entry. The same holds for an error about two entries of
/// one VNI: which of the two faults the library finds first depends on the order in memory.
template <class Render>
void renderNamingInvalidEntry(Vex::Ptr<Vex::Dir> const & entries, NoNumber noNumber,
                              Render && render) {
    auto const rethrow = [&] {
        if (auto const invalid =
                entries ? firstInvalidEntryName(*entries, noNumber) : std::nullopt) {
            throw std::runtime_error(*invalid);
        }
        throw;
    };
    try {
        render();
    } catch (Vex::RangeError const &) {
        rethrow();
    } catch (Vex::ReinstantiationError const &) {
        rethrow();
    } catch (std::logic_error const &) { // of std::stoi
        rethrow();
    }
}

} // namespace vxshow::cli::command
