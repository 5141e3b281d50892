#include "VxlanController/command/CliTrace.h"

namespace VxlanController::Cli {

Trace::Handle & cliTrace() {
    static Trace::Handle handle("VxlanControllerCli");
    return handle;
}

} // namespace VxlanController::Cli
