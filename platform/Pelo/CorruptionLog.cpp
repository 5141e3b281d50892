#include "Pelo/CorruptionLog.h"

#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

void CorruptionLog::corruptionHandlerIs(Handler handler) {
    handler_ = std::move(handler);
}

void CorruptionLog::handleCorruption(std::string_view message) const {
    corruptions_.fetch_add(1, std::memory_order_relaxed);
    if (handler_) {
        handler_(message);
    }
}

} // namespace Pelo
