#include "vxshow/system/MemoryFile.h"

#include "vxshow/system/SystemError.h"

#include <sys/mman.h>
#include <unistd.h>

namespace vxshow::system {

MemoryFile::MemoryFile() : descriptor_(::memfd_create("output", MFD_CLOEXEC)) {
    if (!descriptor_.isOpen()) {
        throwSystemError();
    }
}

FileBytes MemoryFile::bytes() const {
    ::lseek(descriptor(), 0, SEEK_SET);
    return FileBytes::read(descriptor());
}

} // namespace vxshow::system
