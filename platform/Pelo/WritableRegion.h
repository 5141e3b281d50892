#pragma once

#include "Pelo/Mapping.h"

#include <array>
#include <memory>
#include <span>
#include <string>

namespace [[gnu::visibility("default")]] Pelo {

/// Where a writer creates its table.
struct Destination {
    enum class Kind {
        memory,    ///< no file: readers get the descriptor
        file,      ///< readers open `name`
        ownMemory, ///< of this process alone: readers get the mapping
    };

    Kind kind;
    /// The table's name in messages; for a file, its path.
    std::string name;
};

/// A table's memory as its only writer sees it. Readers cannot see it before `publish`.
class WritableRegion {
public:
    /// Allocates memory for `capacity` slots. Raises `TableError`.
    WritableRegion(Destination const & destination, Format const & format, U64 capacity);

    U64 capacity() const noexcept { return capacity_; }

    /// The seed of the places of keys, drawn for this region.
    U64 seed() const noexcept { return seed_; }

    Counts const & counts() const noexcept { return counts_; }

    /// The memory to hand to readers; negative if it is this process's own.
    int descriptor() const noexcept { return descriptor_.number(); }

    /// The memory for readers in this process.
    std::shared_ptr<Mapping const> const & mapping() const noexcept { return mapping_; }

    /// Stores words of a slot together with the new counts, as one change.
    void change(std::size_t first, std::span<U64 const> words, Counts const & counts) noexcept;

    /// Stores words before readers can see them.
    void fill(std::size_t first, std::span<U64 const> words) noexcept;

    /// Writes the header of a filled region, and puts the region where readers find it.
    /// Raises `TableError`.
    void publish(Counts const & counts);

    /// Tells readers that this region will not change any more.
    void replaced() noexcept;

    template <std::size_t count>
    void read(std::size_t first, std::array<U64, count> & words) const noexcept {
        for (std::size_t i = 0; i < count; ++i) {
            words[i] = mapping_->words()[first + i].load(std::memory_order_relaxed);
        }
    }

private:
    Format format_;
    U64 capacity_;
    U64 seed_;
    Counts counts_;
    std::unique_ptr<NewFile> newFile_;
    Descriptor descriptor_;
    std::shared_ptr<Mapping const> mapping_;
};

} // namespace Pelo
