#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace vxshow::system {

/// A text followed by a zero byte and further bytes that are not part of it: a parser can read
/// `FileBytes::padding` bytes past its end.
class PaddedText {
public:
    std::string_view text() const noexcept { return text_; }

private:
    friend class FileBytes;

    explicit PaddedText(std::string_view text) noexcept : text_(text) {}

    std::string_view text_;
};

/// The bytes of a file, followed by zeros that are not part of it: a parser can read past the end,
/// and so process many bytes at a time.
///
/// The file is read, not mapped: if a mapped file is truncated, a signal ends the process.
class FileBytes {
public:
    /// How many zeros follow the bytes.
    static constexpr std::size_t padding = 64;

    /// The longest file that is read. Positions in it fit in 32 bits.
    static constexpr std::size_t longest = 0xFFFFFFFF;

    /// Reads `descriptor` to its end. It stays open. It can be a file, a pipe, a socket, a terminal
    /// or /dev/null; other character devices, such as /dev/zero, can have no end and are refused.
    /// Raises `std::system_error` if the system refuses, `std::length_error` for such a device and
    /// for a file that is longer than `most`, which is at most `longest`, and `std::bad_alloc`.
    static FileBytes read(int descriptor, std::size_t most = longest);

    /// As `read`, for the file `path`.
    static FileBytes open(std::string const & path, std::size_t most = longest);

    /// A copy of `text`. Raises `std::length_error` and `std::bad_alloc`.
    static FileBytes copyOf(std::string_view text);

    std::string_view text() const noexcept { return {bytes_.get(), size_}; }

    /// The whole text. Valid as long as the bytes are.
    PaddedText padded() const noexcept { return PaddedText(text()); }

    /// `part`, a part of `text()`, in place: the byte after it becomes zero. Valid as long as the
    /// bytes are.
    PaddedText padded(std::string_view part) noexcept {
        auto const end = static_cast<std::size_t>(part.data() - bytes_.get()) + part.size();
        bytes_[end] = '\0';
        return PaddedText(part);
    }

private:
    friend class GrowingBytes;

    struct Free {
        void operator()(char * bytes) const noexcept { std::free(bytes); }
    };

    /// From `malloc`, so that it can grow in place, as the bytes of a pipe require.
    using Buffer = std::unique_ptr<char[], Free>;

    FileBytes(Buffer bytes, std::size_t size) noexcept : bytes_(std::move(bytes)), size_(size) {}

    Buffer bytes_;
    std::size_t size_;
};

} // namespace vxshow::system
