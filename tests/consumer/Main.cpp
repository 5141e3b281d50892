#include "VxlanController/VxlanControllerCliModel.h"

#include <unistd.h>

/// Prints the received MAC addresses of a fabric without any.
int main() {
    namespace Cli = VxlanController::Cli;
    auto const command = Cli::vcsVniReceivedFactory(
        Vex::makePtr<Vex::Dir>(), Cli::vniStatusDirListFactory(), Cli::hostFloodTableListFactory(),
        false, Vxlan::VniOrNone(), Nolt::EthAddr(), "", Cli::vtepListFactory());
    command->render(STDOUT_FILENO, 1, 2);
}
