#include "VxlanController/command/CliTrace.h"

namespace VxlanController::Cli {

namespace {

/// Registers the handle when the library is loaded, so that a program can enable it by name
/// before it runs a command.
[[maybe_unused]] Trace::Handle const & registered = cliTrace();

} // namespace

Trace::Handle & cliTrace() {
    static Trace::Handle handle("VxlanControllerCli");
    return handle;
}

} // namespace VxlanController::Cli
