#include "Pelo/Region.h"

#include "Pelo/Errors.h"

#include <chrono>
#include <sched.h>

namespace [[gnu::visibility("default")]] Pelo {

namespace {

using Clock = std::chrono::steady_clock;

// A change takes well under a microsecond, but a writer can be preempted in the middle of
// one, for as long as a busy host takes to schedule it again.
constexpr std::chrono::milliseconds longestChange{250};

// A writer that makes changes without a pause still leaves gaps in which a slot can be
// read; a reader that has found none after this time never will.
constexpr std::chrono::seconds longestWait{5};

// How often a slot is read again before the reader yields the processor to the writer.
constexpr U32 eagerReads = 64;

// Waits for the end of a change, and gives up if it does not come.
class Patience {
public:
    /// Of a reader of the table `name`. Its first `eagerAttempts` fail without a wait.
    Patience(std::string const & name, U32 eagerAttempts)
        : name_(name), eagerAttempts_(eagerAttempts) {}

    /// Waits a little. `currentGeneration()` gives that of the table.
    template <class Generation>
    void wait(Generation && currentGeneration) {
        if (eagerAttempts_ > 0) {
            --eagerAttempts_;
            return;
        }
        ::sched_yield();
        auto const now = Clock::now();
        U64 const generation = currentGeneration();
        if (!hasWaited_) {
            begin_ = now;
        }
        if (!hasWaited_ || generation != generation_) {
            hasWaited_ = true;
            generation_ = generation;
            since_ = now;
        }
        if (now - since_ > longestChange || now - begin_ > longestWait) {
            throw CorruptionDetectedException(
                name_, "header", "a change under way, generation " + std::to_string(generation),
                "an even generation, the end of the change");
        }
    }

private:
    std::string const & name_;
    U32 eagerAttempts_;
    bool hasWaited_ = false;
    U64 generation_ = 0;      // of the last wait
    Clock::time_point begin_; // of the first wait
    Clock::time_point since_; // of the wait that first saw `generation_`
};

} // namespace

std::shared_ptr<Region const> Region::open(std::string const & path, Format const & format) {
    return std::make_shared<Region const>(path, openFile(path), format);
}

std::shared_ptr<Region const> Region::attach(int descriptor, std::string name,
                                             Format const & format) {
    auto copy = duplicate(descriptor, name);
    return std::make_shared<Region const>(std::move(name), std::move(copy), format);
}

namespace {

/// The length of the file of a table, which has at least a header.
U64 tableFileSize(int descriptor, std::string_view name) {
    U64 const size = fileSize(descriptor, name);
    if (size < headerSize) {
        throw TableError(name, "is no table: " + std::to_string(size) +
                                   " bytes long, a header alone has " + std::to_string(headerSize));
    }
    return size;
}

U64 generationOf(int descriptor, std::string_view name) {
    U64 generation;
    copyFile(descriptor, generationWord * sizeof generation, &generation, sizeof generation, name);
    return generation;
}

} // namespace

std::shared_ptr<Region const> Region::copyOf(int descriptor, std::string name,
                                             Format const & format) {
    U64 const size = tableFileSize(descriptor, name);
    FixedHeader header;
    copyFile(descriptor, 0, header.data(), sizeof header, name);
    checkHeader(header, format, size, name);
    if (!isStoredWhole(descriptor)) {
        throw CorruptionDetectedException(name, "file", "a hole", "all slots");
    }
    auto const memory = std::make_shared<Mapping const>(size, name);
    auto const generation = [&] { return generationOf(descriptor, name); };
    for (Patience patience(name, 0);; patience.wait(generation)) {
        U64 const before = generation();
        if (before % 2 != 0) {
            continue;
        }
        copyFile(descriptor, 0, memory->words(), size, name);
        if (generation() == before) {
            return std::make_shared<Region const>(std::move(name), memory, format);
        }
    }
}

Region::Region(std::string name, Descriptor descriptor, Format const & format)
    : name_(std::move(name)), descriptor_(std::move(descriptor)), format_(format),
      mapping_(std::make_shared<Mapping const>(descriptor_.number(),
                                               tableFileSize(descriptor_.number(), name_),
                                               Mapping::Access::read, name_)),
      words_(mapping_->words()), capacity_(checkHeader(header(), format_, mapping_->size(), name_)),
      seed_(seedOf(header())) {
    state();
}

Region::Region(std::string name, std::shared_ptr<Mapping const> memory, Format const & format)
    : name_(std::move(name)), format_(format), mapping_(std::move(memory)),
      words_(mapping_->words()), capacity_(checkHeader(header(), format_, mapping_->size(), name_)),
      seed_(seedOf(header())) {
    state();
}

Region::State Region::state() const {
    CountsWords counts;
    U64 const generation = read(countsFirstWord, counts);
    return {checkCounts(counts, capacity_, name_), generation};
}

void Region::check() const {
    // The length is checked first: memory that the file no longer backs cannot even be read.
    U64 const size =
        descriptor_.number() < 0 ? mapping_->size() : fileSize(descriptor_.number(), name_);
    if (size != regionSize(format_, capacity_)) {
        throwFileSize(name_, size, regionSize(format_, capacity_));
    }
    recheckHeader();
}

void Region::recheckHeader() const {
    if (header() != makeHeader(format_, capacity_, seed_)) {
        throw CorruptionDetectedException(name_, "header", "another header",
                                          "the one that it was opened with");
    }
}

FixedHeader Region::header() const noexcept {
    FixedHeader header;
    for (std::size_t i = 0; i < header.size(); ++i) {
        header[i] = words()[i].load(std::memory_order_relaxed);
    }
    return header;
}

U64 Region::readPatiently(std::optional<U64> generation, TryRead tryAgain, std::size_t first,
                          void * out) const {
    for (Patience patience(name_, eagerReads); !generation;
         generation = tryAgain(*this, first, out)) {
        patience.wait([this] { return this->generation(); });
    }
    if (*generation != checkedGeneration_.load(std::memory_order_relaxed)) {
        recheckHeader();
        checkedGeneration_.store(*generation, std::memory_order_relaxed);
    }
    return *generation;
}

} // namespace Pelo
