#pragma once

#include "Trace/Handle.h"
#include "Trace/Sink.h"

#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace Trace {

/// What all handles of the process share: who they are, which levels a new one starts
/// with, and where records go.
class Registry {
public:
    /// Outlives every handle: a handle's constructor calls this before it is done.
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
