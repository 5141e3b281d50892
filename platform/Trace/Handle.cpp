#include "Trace/Handle.h"

#include "Trace/Registry.h"

#include <algorithm>
#include <utility>

namespace [[gnu::visibility("default")]] Trace {
namespace {

unsigned levelsUpTo(unsigned level) {
    return (2U << std::min(level, maxLevel)) - 1U;
}

} // namespace

Handle::Handle(std::string name) : name_(std::move(name)) {
    Registry::instance().add(*this);
}

Handle::~Handle() {
    Registry::instance().remove(*this);
}

void Handle::enableUpTo(unsigned level) noexcept {
    levels_.store(levelsUpTo(level), std::memory_order_relaxed);
}

void Handle::enable(unsigned level, bool on) noexcept {
    if (level > maxLevel) {
        return;
    }
    if (on) {
        levels_.fetch_or(1U << level, std::memory_order_relaxed);
    } else {
        levels_.fetch_and(~(1U << level), std::memory_order_relaxed);
    }
}

void Handle::disable() noexcept {
    levels_.store(0, std::memory_order_relaxed);
}

void enableAllUpTo(unsigned level) {
    Registry::instance().setLevels(levelsUpTo(level));
}

bool enableUpTo(std::string_view handleName, unsigned level) {
    return Registry::instance().setLevels(handleName, levelsUpTo(level));
}

void disableAll() {
    Registry::instance().setLevels(0);
}

} // namespace Trace
