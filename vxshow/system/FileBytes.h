#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace vxshow::system {

/// Some text that a zero follows, and bytes that do not belong to it: whoever scans it may look
/// `FileBytes::padding` bytes past its end.
class PaddedText {
public:
    std::string_view text() const noexcept { return text_; }

private:
    friend class FileBytes;

    explicit PaddedText(std::string_view text) noexcept : text_(text) {}

    std::string_view text_;
};

/// The bytes of a file, followed by zeros that do not belong to it: whoever scans them may
/// look some way past the end, so that it can take them many at a time.
///
/// The file is read and not mapped: one that is cut short while it is mapped ends the
/// process with a signal.
class FileBytes {
public:
    /// How many zeros follow the bytes.
    static constexpr std::size_t padding = 64;

    /// The longest file that is read. Positions in it fit in 32 bits.
    static constexpr std::size_t longest = 0xFFFFFFFF;

    /// Reads all of `descriptor`, which may be of any kind that can be read and stays the
    /// caller's. Raises `std::system_error` as the system refuses, `std::length_error` for
    /// a file that is longer than `longest`, and `std::bad_alloc`.
    static FileBytes read(int descriptor);

    /// As `read`, of the file `path`.
    static FileBytes open(std::string const & path);

    /// The bytes of `text`, which came from somewhere else. Raises `std::length_error` and
    /// `std::bad_alloc`.
    static FileBytes copyOf(std::string_view text);

    std::string_view text() const noexcept { return {bytes_.get(), size_}; }

    /// All of it. Valid as long as the bytes are.
    PaddedText padded() const noexcept { return PaddedText(text()); }

    /// `part`, which is part of `text()`, where it stands: the byte behind it becomes zero.
    /// Valid as long as the bytes are.
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

    /// Can grow where it stands, as what comes out of a pipe has to.
    using Buffer = std::unique_ptr<char[], Free>;

    FileBytes(Buffer bytes, std::size_t size) noexcept : bytes_(std::move(bytes)), size_(size) {}

    Buffer bytes_;
    std::size_t size_;
};

} // namespace vxshow::system
