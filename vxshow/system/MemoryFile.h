#pragma once

#include "vxshow/system/FileBytes.h"
#include "vxshow/system/OwnedDescriptor.h"

namespace vxshow::system {

/// A file in memory, without a name: takes what a writer to a descriptor produces.
class MemoryFile {
public:
    /// Raises `std::system_error` when the system refuses.
    MemoryFile();

    /// The descriptor to write to.
    int descriptor() const noexcept { return descriptor_.number(); }

    /// All that was written. Raises what `FileBytes::read` raises.
    FileBytes bytes() const;

private:
    OwnedDescriptor descriptor_;
};

} // namespace vxshow::system
