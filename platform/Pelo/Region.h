#pragma once

#include "Pelo/Mapping.h"

#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

/// A table's memory as a reader sees it: read-only, checked when it is opened, and changed
/// by the writer at any moment.
///
/// Each change is bracketed by two steps of the generation. A read that finds an odd
/// generation, or different ones before and after, is repeated; so a reader never blocks
/// the writer, which can be another process, and never sees half a change. The kernel's
/// seqlock is the model. A generation that stays odd means that the writer died during a
/// change.
///
/// Within a region a key never changes its slot: an erased key keeps it, and a table that
/// needs more slots moves to a new region. So a walk during which entries are inserted and
/// erased reaches every entry that stays exactly once.
///
/// A region is shared with its writer, or a copy of this process alone. Only a shared one shows
/// later changes, and only a shared one can lose its memory: if its file is cut in place, the next
/// read beyond the new end raises SIGBUS. Writers never do that, and memory made by `makeMemory` is
/// sealed against it; for a file that others can write, there is the copy.
class Region {
public:
    /// Opens the table in a file. Raises what `checkHeader` and `checkCounts` raise, and
    /// `TableError` for a file that cannot be mapped.
    static std::shared_ptr<Region const> open(std::string const & path, Format const & format);

    /// Opens the table that `descriptor` refers to; the caller keeps the descriptor and
    /// can close it after the call. `name` is used in messages.
    static std::shared_ptr<Region const> attach(int descriptor, std::string name,
                                                Format const & format);

    /// Copies the table that `descriptor` refers to as it is between two changes. Later
    /// changes of the file do not reach the copy; the caller keeps the descriptor, whose offset
    /// moves. If the writer makes changes all the time, it waits for a pause, 5 s at most. Raises
    /// what `open` raises, and `CorruptionDetectedException` for a file that is cut meanwhile, or
    /// has a hole.
    static std::shared_ptr<Region const> copyOf(int descriptor, std::string name,
                                                Format const & format);

    Region(std::string name, Descriptor descriptor, Format const & format);

    /// The table in memory of this process alone, which its writer can still be filling.
    Region(std::string name, std::shared_ptr<Mapping const> memory, Format const & format);
    Region(Region const &) = delete;
    Region & operator=(Region const &) = delete;

    /// The table's name in messages.
    std::string const & name() const noexcept { return name_; }

    /// The number of slots.
    U64 capacity() const noexcept { return capacity_; }

    /// The seed of the places of keys.
    U64 seed() const noexcept { return seed_; }

    /// The counts, and the generation that they belong to.
    struct State {
        Counts counts;
        U64 generation;
    };

    /// Raises `CorruptionDetectedException`.
    State state() const;

    /// Checks the header and the length of the file, if there is one, again: a table that was
    /// intact when it was opened can have been damaged since. Raises `CorruptionDetectedException`.
    void check() const;

    /// Copies consecutive words as they are between two changes, and checks the header if
    /// there was a change. Returns the generation that the words belong to. Raises
    /// `CorruptionDetectedException` if the writer does not complete a change.
    template <std::size_t count>
    U64 read(std::size_t first, std::array<U64, count> & words) const {
        auto const generation = tryRead(first, words);
        if (generation && *generation == checkedGeneration_.load(std::memory_order_relaxed))
            [[likely]] {
            return *generation;
        }
        return readPatiently(
            generation,
            [](Region const & region, std::size_t place, void * out) {
                return region.tryRead(place, *static_cast<std::array<U64, count> *>(out));
            },
            first, &words);
    }

    /// The current generation. Equal generations mean that nothing changed in between.
    U64 generation() const noexcept {
        return words()[generationWord].load(std::memory_order_acquire);
    }

private:
    using TryRead = std::optional<U64> (*)(Region const &, std::size_t first, void * words);

    template <std::size_t count>
    std::optional<U64> tryRead(std::size_t first, std::array<U64, count> & out) const noexcept {
        U64 const before = generation();
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = words()[first + i].load(std::memory_order_relaxed);
        }
        std::atomic_thread_fence(std::memory_order_acquire);
        U64 const after = words()[generationWord].load(std::memory_order_relaxed);
        if (before % 2 != 0 || before != after) {
            return std::nullopt;
        }
        return before;
    }

    U64 readPatiently(std::optional<U64> generation, TryRead tryAgain, std::size_t first,
                      void * out) const;
    void recheckHeader() const;
    FixedHeader header() const noexcept;

    Word const * words() const noexcept { return words_; }

    std::string name_;
    Descriptor descriptor_; ///< of the file; none if the memory is this process's own
    Format format_;
    std::shared_ptr<Mapping const> mapping_;
    Word const * words_;
    U64 capacity_ = 0;
    U64 seed_ = 0;
    /// The last generation in which the header was valid.
    mutable std::atomic<U64> checkedGeneration_{1};
};

} // namespace Pelo
