#pragma once

#include "VxlanController/VxlanControllerCliModel.h"

#include <optional>
#include <utility>

namespace VxlanController::Cli {

/// Where entries go in the advertised tables: one list of VNIs, without a level of sources.
///
/// A VNI appears in the output only if it has entries, so it is created with the first one.
/// The last VNI is cached, since entries arrive VNI by VNI.
class ListTarget {
public:
    /// When all MACs are listed, a flood list whose MAC has a multipath entry is left out of
    /// the advertised tables. A listing of that one MAC shows both. Destinations rely on it.
    static constexpr bool floodListYieldsToMultipath = true;

    /// When all MACs are listed, an entry that equals the default one (the zero MAC address
    /// with nothing else) is shown, although a look-up treats it as absent.
    static constexpr bool walkTakesDefaultEntries = true;

    explicit ListTarget(Vex::Ptr<VniStatusList> list) : list_(std::move(list)) {}

    /// The tables of `vni`, created if absent.
    VniStatus & vniStatus(Vxlan::Vni vni) {
        if (!last_ || last_->vni() != vni) {
            last_ = list_->vniEntryIs(vni);
        }
        return *last_;
    }

private:
    Vex::Ptr<VniStatusList> list_;
    Vex::Ptr<VniStatus> last_;
};

/// Where the entries of one source go in the received tables: by source, then by VNI. The
/// source, too, is created with its first entry.
class SourceTarget {
public:
    /// The received tables show every flood list.
    static constexpr bool floodListYieldsToMultipath = false;

    /// An entry that equals the default one counts as absent.
    static constexpr bool walkTakesDefaultEntries = false;

    SourceTarget(Vex::Ptr<SwitchDir> directory, Vex::Name source)
        : directory_(std::move(directory)), source_(std::move(source)) {}

    /// The tables of `vni`, created if absent.
    VniStatus & vniStatus(Vxlan::Vni vni) {
        if (!list_) {
            list_.emplace(directory_->switchListIs(source_)->vniStatusListIs());
        }
        return list_->vniStatus(vni);
    }

private:
    Vex::Ptr<SwitchDir> directory_;
    Vex::Name source_;
    std::optional<ListTarget> list_;
};

} // namespace VxlanController::Cli
