#pragma once

#include "Pelo/Layout.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// The files and mappings that hold tables; released by their destructors.
namespace [[gnu::visibility("default")]] Pelo {

/// A word of shared memory. Its accesses are plain loads and stores on every 64-bit
/// processor, but the compiler neither splits nor repeats them.
using Word = std::atomic<U64>;
static_assert(Word::is_always_lock_free && sizeof(Word) == 8);

/// An open file descriptor.
class Descriptor {
public:
    Descriptor() noexcept = default;

    explicit Descriptor(int number) noexcept : number_(number) {}

    Descriptor(Descriptor && other) noexcept : number_(std::exchange(other.number_, -1)) {}

    Descriptor & operator=(Descriptor && other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    ~Descriptor();

    int number() const noexcept { return number_; }

private:
    int number_ = -1;
};

/// Memory shared with everyone who maps the same file, or of this process alone.
class Mapping {
public:
    enum class Access { read, write };

    Mapping() noexcept = default;

    /// Maps the first `size` bytes. Raises `TableError`.
    Mapping(int descriptor, std::size_t size, Access access, std::string_view table);

    /// Memory of this process alone, `size` bytes of zeros: no file, so no limit on the size of
    /// files (RLIMIT_FSIZE) applies, and no other process can cut it. Raises `TableError`.
    Mapping(std::size_t size, std::string_view table);

    Mapping(Mapping && other) noexcept
        : words_(std::exchange(other.words_, nullptr)), size_(std::exchange(other.size_, 0)) {}

    Mapping & operator=(Mapping && other) noexcept {
        std::swap(words_, other.words_);
        std::swap(size_, other.size_);
        return *this;
    }

    ~Mapping();

    /// The first word. The words of a mapping for reading must not be written.
    Word * words() const noexcept { return words_; }

    /// Its length in bytes.
    std::size_t size() const noexcept { return size_; }

private:
    Word * words_ = nullptr;
    std::size_t size_ = 0;
};

/// Opens the file of a table for reading; a POSIX shared-memory object is a file under
/// /dev/shm. Raises `TableError`.
Descriptor openFile(std::string const & path);

/// Another descriptor of the same open file, closed independently. Raises `TableError`.
Descriptor duplicate(int descriptor, std::string_view table);

/// The length of a regular file in bytes. Raises `TableError`, also for anything that has
/// no length, such as a directory.
U64 fileSize(int descriptor, std::string_view table);

/// Copies the `size` bytes of a file from the byte `first` on to `out`, without moving the file's
/// offset. Raises `CorruptionDetectedException` if the file has become shorter, and `TableError`.
void copyFile(int descriptor, U64 first, void * out, U64 size, std::string_view table);

/// Whether the whole file is stored: a file with a hole reads as zeros there, and can be far longer
/// than the disk. Moves the file's offset. True if the file system does not know.
bool isStoredWhole(int descriptor) noexcept;

/// Creates `size` bytes of zeros that have no name in any directory. They can neither
/// shrink nor grow, so reading them never ends in SIGBUS. Raises `TableError`.
Descriptor makeMemory(std::string const & name, U64 size);

/// A file under a temporary name, to be filled and then moved to its path. Removed if it
/// is never published.
class NewFile {
public:
    /// Creates `size` bytes of zeros in the directory of `path`. Everyone can read them,
    /// only the owner can write. Raises `TableError`.
    NewFile(std::string path, U64 size);

    NewFile(NewFile const &) = delete;
    NewFile & operator=(NewFile const &) = delete;
    ~NewFile();

    int descriptor() const noexcept { return descriptor_.number(); }

    /// Moves the file to its path and replaces what was there, in one step. Raises
    /// `TableError`.
    Descriptor publish();

private:
    std::string path_;
    std::string temporary_;
    Descriptor descriptor_;
};

} // namespace Pelo
