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
/// It writes only when the buffer is full or flushed. What is left when it is destroyed
/// is dropped, since a destructor could not report that the disk is full. Bytes that were
/// written are never written again, even if a later part of the same write threw.
class OutputBuffer {
public:
    /// As much as a pipe holds.
    static constexpr std::size_t capacity = std::size_t{64} * 1024;
    /// The maximum argument of reserve().
    static constexpr std::size_t maxReserve = 4096;
    /// The number of bytes after the room of reserve() that can be overwritten too, but not
    /// added: a caller that fills a few bytes can always store a whole register.
    static constexpr std::size_t slack = 32;

    /// Where the text can be split when the buffer is full. With line ends, a listing cut
    /// short by an interrupt ends with a whole line; a line longer than the buffer is
    /// split anywhere.
    enum class Parting : std::uint8_t { anywhere, lineEnds };

    OutputBuffer(int fd, Parting parting);

    /// Adds `text`. Like every function that adds, this can write, and throws what
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

    /// Adds `character` `count` times.
    void fill(char character, std::size_t count) {
        if (count <= room()) [[likely]] {
            std::memset(storage_.get() + used_, character, count);
            used_ += count;
        } else {
            fillInPieces(character, count);
        }
    }

    /// Returns room for `count` bytes (at most maxReserve) to write to directly; commit()
    /// then adds those that were written.
    char * reserve(std::size_t count) {
        if (count > room()) [[unlikely]] {
            makeRoom(count);
        }
        return storage_.get() + used_;
    }

    void commit(std::size_t count) { used_ += count; }

    /// Writes the contents of the buffer to the descriptor.
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
    std::size_t written_ = 0; ///< up to here the bytes have been written
    std::size_t used_ = 0;
};

/// Passes the first `limit` bytes on to a buffer and drops the rest, like snprintf with a
/// fixed buffer size.
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
