#pragma once

#include "Trace/Handle.h"
#include "Trace/Sink.h"

#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace Trace {

/// What all handles of the process share: the list of handles, the levels that a new one
/// starts with, and the sink.
class Registry {
public:
    /// Outlives every handle, since a handle's constructor calls this before it
    /// completes.
    static Registry & instance();

    void add(Handle & handle);
    void remove(Handle & handle);

    void setLevels(unsigned levels);
    bool setLevels(std::string_view name, unsigned levels);

    void setSink(Sink sink);
    std::shared_ptr<Sink const> sink();

private:
    std::mutex mutex_;
    std::vector<Handle *> handles_;
    unsigned levelsOfNewHandles_ = 0;
    std::shared_ptr<Sink const> sink_;
};

} // namespace Trace
