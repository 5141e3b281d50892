#include "VxlanController/mac/CopyEvpn.h"

namespace VxlanController::Cli {

Vex::Ptr<HostFloodTable const> hostFloodTable(Vex::Ptr<HostFloodTableList const> const & list,
                                              Vex::Name const & name) {
    Vex::Ptr<HostFloodTable const> tables;
    if (list) {
        tables = list->hostFloodTable(name);
    }
    if (!tables) {
        if (auto record = cliTrace().at(traceMissingState)) {
            record << "hostFloodTable not created for " << name.stringValue();
        }
    }
    return tables;
}

} // namespace VxlanController::Cli
