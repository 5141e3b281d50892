#include "vxshow/state/snapshot/Snapshot.h"

#include <cstdio>

/// Prints one line for each snapshot named on the command line: "accepted", or why it is refused.
int main(int argc, char ** argv) {
    for (int index = 1; index < argc; ++index) {
        try {
            vxshow::state::snapshot::readSnapshot(argv[index]);
            std::puts("accepted");
        } catch (vxshow::state::snapshot::SnapshotError const & error) {
            std::puts(error.what());
        }
    }
}
