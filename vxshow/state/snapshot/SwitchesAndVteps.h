#pragma once

#include "Vex/Ptr.h"
#include "state/SwitchInfoDir.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

#include <unordered_map>
#include <unordered_set>

namespace vxshow::state::snapshot {

/// Reads switches and VTEPs, two objects of a document in either order, into one directory.
///
/// A switch lists its VTEPs, and each VTEP is described under its own address. So a switch can name
/// a VTEP that is described later, or nowhere: that is known only at the end. A VTEP can name
/// switches that do not exist.
class SwitchInfoReader {
public:
    /// Reads `{ SWITCH-ID: { "vteps": [ IP, … ] } }`. Throws `Refusal`.
    void readSwitches(text::JsonValue & value);

    /// Reads `{ IP: { "active": BOOL, "switches": [ SWITCH-ID, … ] } }`. Throws `Refusal`.
    void readVteps(text::JsonValue & value);

    /// The directory, or null if neither object was read. Throws the `Refusal` of the first VTEP
    /// that a switch names but that is not described.
    Vex::Ptr<VxlanController::SwitchInfoDir> finished() const;

private:
    friend void writeSwitches(ValuesWriter &, std::string_view,
                              VxlanController::SwitchInfoDir const &);

    struct Format;

    VxlanController::SwitchInfoDir & directory();
    void readVtepsOf(text::JsonValue & value, VxlanController::SwitchInfo & switchInfo);

    Vex::Ptr<VxlanController::SwitchInfoDir> directory_;
    std::unordered_set<Nolt::IpGenAddr> described_;
    std::unordered_map<Nolt::IpGenAddr, char const *> named_; ///< and where each is first named
};

/// Writes the member `key`, the switches of `dir`.
///
/// Switches and VTEPs name each other by address and VXLAN interface. A snapshot cannot record the
/// interface, and the order in which a switch's VTEPs are examined depends on it. So both writers
/// throw `Unwritable` if an interface is named; this one also does if a VTEP is not in `dir`.
void writeSwitches(ValuesWriter & values, std::string_view key,
                   VxlanController::SwitchInfoDir const & dir);

/// Writes the member `key`, the VTEPs of `dir`.
void writeVteps(ValuesWriter & values, std::string_view key,
                VxlanController::SwitchInfoDir const & dir);

} // namespace vxshow::state::snapshot
