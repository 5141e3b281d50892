#include "fuzz/Targets.h"
#include "fuzz/vxshow/Listings.h"

/// Snapshots: one that is accepted can be written, is then the same when it is read and written
/// again, and every command lists it.
namespace fuzz {

void snapshot(std::string_view bytes) {
    static Scratch file;
    if (auto const mount = mountOf(bytes)) {
        checkSnapshot(*mount, file);
        renderAll(*mount, static_cast<unsigned>(bytes.size() % 3 + 1), file);
    }
}

} // namespace fuzz
