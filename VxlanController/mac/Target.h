#pragma once

#include "VxlanController/VxlanControllerCliModel.h"

namespace VxlanController::Cli {

/// Where the entries of one source go in the received tables: source, then VNI.
///
/// A source or VNI exists in the output only when an entry stands under it, so both are
/// made with the first one. The last VNI is kept at hand, since entries come VNI by VNI.
class SourceTarget {
public:
    SourceTarget(Vex::Ptr<SwitchDir> const & directory, Vex::Name const & source)
        : directory_(directory), source_(source) {}

    /// The tables of `vni`, made when they are not there.
    VniStatus & vniStatus(Vxlan::Vni vni) {
        if (!last_ || last_->vni() != vni) {
            if (!list_) {
                list_ = directory_->switchListIs(source_)->vniStatusListIs();
            }
            last_ = list_->vniEntryIs(vni);
        }
        return *last_;
    }

private:
    Vex::Ptr<SwitchDir> directory_;
    Vex::Name source_;
    Vex::Ptr<VniStatusList> list_;
    Vex::Ptr<VniStatus> last_;
};

} // namespace VxlanController::Cli
