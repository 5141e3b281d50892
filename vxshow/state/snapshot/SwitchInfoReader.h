#pragma once

#include "Vex/Ptr.h"
#include "state/SwitchInfoDir.h"
#include "vxshow/text/Json.h"

#include <unordered_map>
#include <unordered_set>

namespace vxshow::state::snapshot {

/// Reads switches and VTEPs, two objects of a document in either order, into one directory.
///
/// A switch lists its VTEPs, and what is known of a VTEP stands under its own address. So a
/// switch may name a VTEP that is described further on, or nowhere: which of the two is
/// known at the end. A VTEP may name switches that do not exist.
class SwitchInfoReader {
public:
    /// Reads `{ SWITCH-ID: { "vteps": [ IP, ... ] } }`. Throws `Refusal`.
    void readSwitches(text::JsonValue & value);

    /// Reads `{ IP: { "active": BOOL, "switches": [ SWITCH-ID, ... ] } }`. Throws `Refusal`.
    void readVteps(text::JsonValue & value);

    /// The directory, or null when neither object was read. Throws the `Refusal` of the first
    /// VTEP that a switch names and that is not described.
    Vex::Ptr<VxlanController::SwitchInfoDir> finished() const;

private:
    VxlanController::SwitchInfoDir & directory();
    void readVtepsOf(text::JsonValue & value, VxlanController::SwitchInfo & switchInfo);

    Vex::Ptr<VxlanController::SwitchInfoDir> directory_;
    std::unordered_set<Nolt::IpGenAddr> described_;
    std::unordered_map<Nolt::IpGenAddr, char const *> named_; ///< with its first place
};

} // namespace vxshow::state::snapshot
