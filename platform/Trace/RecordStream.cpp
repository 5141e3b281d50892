#include "Trace/RecordStream.h"

#include "Trace/Registry.h"
#include "Trace/Sink.h"

#include <locale>
#include <sstream>

namespace [[gnu::visibility("default")]] Trace {
namespace {

/// Set while this thread is in a sink, whose own traces would otherwise recurse without
/// end.
thread_local bool delivering = false;

struct DeliveryScope {
    DeliveryScope() { delivering = true; }

    DeliveryScope(DeliveryScope const &) = delete;
    DeliveryScope & operator=(DeliveryScope const &) = delete;

    ~DeliveryScope() { delivering = false; }
};

} // namespace

struct RecordStream::Body {
    Record record;
    std::ostringstream text;
};

void RecordStream::DeleteBody::operator()(Body * body) const noexcept {
    std::default_delete<Body>()(body);
}

RecordStream::RecordStream(std::string_view handle, unsigned level, char const * file, int line,
                           char const * function)
    : body_(std::make_unique<Body>().release()) {
    body_->record = {.handle = handle,
                     .level = level,
                     .file = file,
                     .line = line,
                     .function = function,
                     .text = {}};
    body_->text.imbue(std::locale::classic());
}

std::ostream & RecordStream::stream() noexcept {
    return body_->text;
}

void RecordStream::deliver() noexcept {
    if (delivering) {
        return;
    }
    DeliveryScope scope;
    try {
        if (auto sink = Registry::instance().sink()) {
            body_->record.text = body_->text.view();
            (*sink)(body_->record);
        }
    } catch (...) {
        // The record is lost; the work that it reports on continues.
        return;
    }
}

} // namespace Trace
