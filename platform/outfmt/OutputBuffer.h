#pragma once

#include "outfmt/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace [[gnu::visibility("default")]] outfmt {

/// The one buffer between the printer and its descriptor: many small texts in, few large
/// writes out.
///
/// Nothing is written but when the buffer runs full or is flushed; what is left in it
/// when it is destroyed is dropped, since a destructor could not report that the disk is
/// full. Bytes that were written are never written again, also when a later part of the
/// same write threw.
class OutputBuffer {
public:
    /// As much as a pipe holds.
    static constexpr std::size_t capacity = std::size_t{64} * 1024;
    /// The most bytes that reserve() may be asked for.
    static constexpr std::size_t maxReserve = 4096;
    /// Bytes behind what reserve() gives that may be written to as well, though not added:
    /// who fills a few bytes need not ask how many, and writes as many at once as a register
    /// holds.
    static constexpr std::size_t slack = 32;

    /// Where the text may be parted when the buffer runs full. At line ends, a listing
    /// that an interrupt cuts short ends with a whole line; a line longer than the buffer
    /// is parted anywhere.
    enum class Parting : std::uint8_t { anywhere, lineEnds };

    OutputBuffer(int fd, Parting parting);

    /// Adds `text`. Like everything that adds, this may write, and throws what
    /// Descriptor::writeSome() throws.
    void append(std::string_view text) {
        if (text.size() <= room()) [[likely]] {
            used_ += text.copy(storage_.get() + used_, text.size());
        } else {
            appendInPieces(text);
        }
    }

    void append(char character) {
        if (room() == 0) [[unlikely]] {
            makeRoom();
        }
        storage_[used_++] = character;
    }

    /// Adds `count` times `character`.
    void fill(char character, std::size_t count) {
        if (count <= room()) [[likely]] {
            std::memset(storage_.get() + used_, character, count);
            used_ += count;
        } else {
            fillInPieces(character, count);
        }
    }

    /// Room for `count` bytes (maxReserve at most) to write to directly; commit() then
    /// adds as many of them as were written.
    char * reserve(std::size_t count) {
        if (count > room()) [[unlikely]] {
            makeRoom(count);
        }
        return storage_.get() + used_;
    }

    void commit(std::size_t count) { used_ += count; }

    /// Writes everything that is in the buffer.
    void flush();

private:
    std::size_t room() const { return capacity - used_; }

    void appendInPieces(std::string_view text);
    void fillInPieces(char character, std::size_t count);
    void makeRoom(std::size_t count = 1);
    std::size_t lastPart() const;
    void write(std::size_t end);

    Descriptor descriptor_;
    Parting parting_;
    std::unique_ptr<char[]> storage_;
    std::size_t written_ = 0; ///< up to here the bytes have left already
    std::size_t used_ = 0;
};

/// Passes on the first `limit` bytes to a buffer and drops the rest, like snprintf into a
/// buffer of a fixed size.
class LimitedOutput {
public:
    LimitedOutput(OutputBuffer & buffer, std::size_t limit) : buffer_(buffer), left_(limit) {}

    void append(std::string_view text) { buffer_.append(text.substr(0, take(text.size()))); }

    void append(char character) { fill(character, 1); }

    void fill(char character, std::size_t count) { buffer_.fill(character, take(count)); }

    char * reserve(std::size_t count) { return buffer_.reserve(count); }

    void commit(std::size_t count) { buffer_.commit(take(count)); }

private:
    std::size_t take(std::size_t count) {
        std::size_t taken = count < left_ ? count : left_;
        left_ -= taken;
        return taken;
    }

    OutputBuffer & buffer_;
    std::size_t left_;
};

} // namespace outfmt
