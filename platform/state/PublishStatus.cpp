#include "state/PublishStatus.h"

namespace [[gnu::visibility("default")]] Statestore {

Vex::Ptr<SystemPublishedMount const>
PublishStatus::system(Controller::SystemId const & systemId) const {
    auto const * slot = systems_.find(systemId);
    return slot ? slot->element() : nullptr;
}

Vex::Ptr<SystemPublishedMount> PublishStatus::systemIs(Controller::SystemId const & systemId) {
    auto const make = [&] { return Systems::Slot(Vex::makePtr<SystemPublishedMount>(systemId)); };
    return systems_.findOrInsert(systemId, make).element();
}

} // namespace Statestore
