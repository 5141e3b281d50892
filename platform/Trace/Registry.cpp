#include "Trace/Registry.h"

#include <utility>

namespace [[gnu::visibility("default")]] Trace {

Registry & Registry::instance() {
    static Registry registry;
    return registry;
}

void Registry::add(Handle & handle) {
    std::lock_guard lock(mutex_);
    handles_.push_back(&handle);
    handle.levels_.store(levelsOfNewHandles_, std::memory_order_relaxed);
}

void Registry::remove(Handle & handle) {
    std::lock_guard lock(mutex_);
    std::erase(handles_, &handle);
}

void Registry::setLevels(unsigned levels) {
    std::lock_guard lock(mutex_);
    levelsOfNewHandles_ = levels;
    for (Handle * handle : handles_) {
        handle->levels_.store(levels, std::memory_order_relaxed);
    }
}

bool Registry::setLevels(std::string_view name, unsigned levels) {
    std::lock_guard lock(mutex_);
    bool found = false;
    for (Handle * handle : handles_) {
        if (handle->name() == name) {
            handle->levels_.store(levels, std::memory_order_relaxed);
            found = true;
        }
    }
    return found;
}

void Registry::setSink(Sink sink) {
    auto shared = sink ? std::make_shared<Sink const>(std::move(sink)) : nullptr;
    // The previous sink is destroyed outside the lock: its destructor can trace.
    std::lock_guard lock(mutex_);
    sink_.swap(shared);
}

std::shared_ptr<Sink const> Registry::sink() {
    std::lock_guard lock(mutex_);
    return sink_;
}

void setSink(Sink sink) {
    Registry::instance().setSink(std::move(sink));
}

} // namespace Trace
