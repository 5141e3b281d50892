#include "fuzz/Targets.h"
#include "fuzz/vxshow/Listings.h"

/// Snapshots: one that is accepted can be written, is then the same when it is read and written
/// again, and every command lists it; what a command does not select does not matter.
namespace fuzz {

void snapshot(std::string_view bytes) {
    static Scratch file;
    if (auto const mount = mountOf(bytes)) {
        checkSnapshot(*mount, file);
        listAll(*mount, static_cast<unsigned>(bytes.size() % 3 + 1), file);
        listSelected(bytes, *mount, bytes.size() / 3, file);
    }
}

} // namespace fuzz
