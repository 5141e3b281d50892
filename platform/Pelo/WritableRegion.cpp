#include "Pelo/WritableRegion.h"

#include "Vex/KeyedHash.h"

namespace [[gnu::visibility("default")]] Pelo {

WritableRegion::WritableRegion(Destination const & destination, Format const & format, U64 capacity)
    : format_(format), capacity_(capacity), seed_(Vex::drawHashSeed()) {
    U64 const size = regionSize(format, capacity);
    if (destination.kind == Destination::Kind::ownMemory) {
        mapping_ = std::make_shared<Mapping const>(size, destination.name);
        return;
    }
    int descriptor = -1;
    if (destination.kind == Destination::Kind::file) {
        newFile_ = std::make_unique<NewFile>(destination.name, size);
        descriptor = newFile_->descriptor();
    } else {
        descriptor_ = makeMemory(destination.name, size);
        descriptor = descriptor_.number();
    }
    mapping_ =
        std::make_shared<Mapping const>(descriptor, size, Mapping::Access::write, destination.name);
}

void WritableRegion::change(std::size_t first, std::span<U64 const> words,
                            Counts const & counts) noexcept {
    // Region::tryRead relies on this order: the odd generation is visible before any word
    // of the change, the next even one after all of them.
    Word & generation = mapping_->words()[generationWord];
    U64 const before = generation.load(std::memory_order_relaxed);
    generation.store(before + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    fill(first, words);
    if (counts != counts_) {
        fill(countsFirstWord, makeCounts(counts));
        counts_ = counts;
    }
    generation.store(before + 2, std::memory_order_release);
}

void WritableRegion::fill(std::size_t first, std::span<U64 const> words) noexcept {
    Word * place = mapping_->words() + first;
    for (U64 const word : words) {
        place++->store(word, std::memory_order_relaxed);
    }
}

void WritableRegion::publish(Counts const & counts) {
    counts_ = counts;
    fill(countsFirstWord, makeCounts(counts));
    fill(0, makeHeader(format_, capacity_, seed_));
    if (newFile_) {
        descriptor_ = newFile_->publish();
        newFile_.reset();
    }
}

void WritableRegion::replaced() noexcept {
    auto counts = counts_;
    counts.replaced = true;
    change(headerWords, {}, counts);
}

} // namespace Pelo
