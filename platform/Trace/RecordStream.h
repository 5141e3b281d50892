#pragma once

#include <memory>
#include <ostream>
#include <string_view>

namespace [[gnu::visibility("default")]] Trace {

/// A trace record being written. It is delivered to the sink once, when it is destroyed;
/// a record whose level is off is empty, converts to false and does nothing.
///
/// Numbers are written in the classic locale, whatever locale the process has set.
class RecordStream {
public:
    RecordStream() noexcept = default;

    /// The handle's name, file and function must outlive the record.
    RecordStream(std::string_view handle, unsigned level, char const * file, int line,
                 char const * function);

    RecordStream(RecordStream &&) noexcept = default;
    RecordStream & operator=(RecordStream &&) = delete;

    /// Delivers the record. Throws nothing, whatever the sink does.
    ~RecordStream() {
        if (body_) {
            deliver();
        }
    }

    explicit operator bool() const noexcept { return body_ != nullptr; }

    /// Adds a value as std::ostream prints it.
    template <class T>
    RecordStream & operator<<(T const & value) {
        if (body_) {
            stream() << value;
        }
        return *this;
    }

private:
    struct Body;

    struct DeleteBody {
        void operator()(Body * body) const noexcept;
    };

    std::ostream & stream() noexcept;
    void deliver() noexcept;

    std::unique_ptr<Body, DeleteBody> body_;
};

} // namespace Trace
