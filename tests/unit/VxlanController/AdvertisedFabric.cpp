#include "tests/unit/VxlanController/AdvertisedFabric.h"

#include "tests/unit/VxlanController/Rendered.h"

using namespace VxlanController;

VniTables & AdvertisedFabric::entry(char const * name) {
    for (auto const & [known, status] : entries_) {
        if (known == name) {
            return *status;
        }
    }
    auto const status = Vex::makePtr<VniFdbStatusV2>();
    entries_.emplace_back(name, status);
    vniStatusDir->entityIs(name, status);
    return *status;
}

VniTables & AdvertisedFabric::hsc(Vex::U32 vni) {
    if (!hsc_) {
        hsc_ = Vex::makePtr<VniStatusDirV2>();
        sources->vniStatusDirIs("HSC", hsc_);
    }
    return *hsc_->vniStatusV2Is(Vxlan::Vni(vni));
}

Vex::Ptr<Cli::VcsVniAdvertised> advertisedCommand(AdvertisedFabric const & fabric,
                                                  MacFilter const & filter) {
    return Cli::vcsVniAdvertisedFactory(fabric.vniStatusDir, fabric.sources, fabric.evpn.list,
                                        filter.dotted, filter.vni, macOf(filter), filter.source,
                                        vtepListOf(filter));
}

std::string advertisedText(AdvertisedFabric const & fabric, MacFilter const & filter) {
    return rendered(advertisedCommand(fabric, filter));
}

std::string advertisedJson(AdvertisedFabric const & fabric, MacFilter const & filter,
                           Vex::U32 revision) {
    return rendered(advertisedCommand(fabric, filter), jsonFormat, revision);
}
