#pragma once

#include "Vex/Dir.h"
#include "Vex/Reinstantiation.h"
#include "VxlanController/arp/CopyArp.h"

#include <optional>
#include <stdexcept>
#include <string>

/// Error messages for per-VNI entries that contradict each other.
///
/// Several names can denote one VNI, such as "10" and "010". If their ARP tables differ, the
/// library raises an error about the table that it builds, without the entries that it is built
/// from. The publisher of the state needs to know the entries, so they are searched for here.
namespace vxshow::cli::command {

/// How two entries of one VNI contradict each other, among the bindings that `filter` matches:
/// "entries '010' and '10' of VNI 10 disagree about 10.0.0.1: preference 1 and 2". If there are
/// several contradictions, it describes the one with the lowest VNI and address; nullopt if the
/// entries agree. The command must accept every name.
std::optional<std::string> firstDisagreement(Vex::Dir const & entries,
                                             VxlanController::Cli::ArpFilter const & filter);

/// Calls `render`. The library's error about a contradiction is replaced with a
/// `std::runtime_error` that names the entries.
template <class Render>
void renderNamingDisagreement(Vex::Ptr<Vex::Dir> const & entries,
                              VxlanController::Cli::ArpFilter const & filter, Render && render) {
    try {
        render();
    } catch (Vex::ReinstantiationError const &) {
        if (auto const found = entries ? firstDisagreement(*entries, filter) : std::nullopt) {
            throw std::runtime_error(*found);
        }
        throw;
    }
}

} // namespace vxshow::cli::command
