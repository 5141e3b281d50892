#pragma once

#include "Pelo/Errors.h"
#include "Pelo/Schema.h"
#include "Vex/HashFactors.h"

#include <array>
#include <cstring>
#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

enum class SlotState : U8 {
    empty, ///< holds no key; no insertion has ever skipped it
    live,
    dead, ///< its key was erased, but gets this slot if it is inserted again
};

/// Where the keys of one table are stored.
///
/// Each table has its own random order, from the seed in its header: hosts choose their MAC
/// addresses, and without a secret they could choose ones that share a place, so that every
/// search passes all of them. The seed is as secret as the table: anyone who can read the file can
/// also choose such keys.
///
/// Different orders also keep a table that is filled from a walk over another one from having
/// all its keys in its first slots, one long run that every search would have to pass.
template <Schema S>
class KeyPlaces {
public:
    using Words = std::array<U64, (S::keySize + 7) / 8>;

    KeyPlaces(U64 seed, U64 capacity) noexcept
        : factors_(Factors::fromSeed(seed)), capacity_(capacity) {}

    /// The first slot that can hold the key of these words; the search goes on from there and
    /// wraps at the end.
    U64 firstSlot(Words const & key) const noexcept {
        return (factors_.hash(key) >> 32) * capacity_ >> 32;
    }

    /// The number of slots.
    U64 capacity() const noexcept { return capacity_; }

private:
    using Factors = Vex::HashFactors<std::tuple_size_v<Words>>;

    Factors factors_;
    U64 capacity_;
};

/// A key prepared for a search: its bytes, and where the search begins.
template <Schema S>
class EncodedKey {
public:
    explicit EncodedKey(typename S::Key const & key) noexcept { S::encodeKey(key, bytes()); }

    U8 const * bytes() const noexcept { return reinterpret_cast<U8 const *>(words_.data()); }

    /// The first slot that can hold the key.
    U64 firstSlot(KeyPlaces<S> const & places) const noexcept { return places.firstSlot(words_); }

private:
    U8 * bytes() noexcept { return reinterpret_cast<U8 *>(words_.data()); }

    typename KeyPlaces<S>::Words words_{};
};

/// A slot, copied from shared memory or prepared for copying to it.
///
/// The slot's number is part of its checksum, so that a good slot in the wrong place is
/// detected as damage. Empty slots have checksums too: a lost page, which reads as zeros,
/// does not look like empty slots.
template <Schema S>
class Slot {
public:
    using Words = std::array<U64, formatOf<S>.slotWords()>;

    /// Where the slot begins, in words from the start of the table.
    static constexpr std::size_t place(U64 number) noexcept {
        return headerWords + number * std::tuple_size_v<Words>;
    }

    SlotState state() const noexcept { return static_cast<SlotState>(bytes()[statePlace]); }

    typename S::Key key() const { return S::decodeKey(bytes() + keyPlace); }

    typename S::Value value() const { return S::decodeValue(bytes() + valuePlace); }

    bool holds(EncodedKey<S> const & key) const noexcept {
        return std::memcmp(bytes() + keyPlace, key.bytes(), S::keySize) == 0;
    }

    void stateIs(SlotState state) noexcept { bytes()[statePlace] = static_cast<U8>(state); }

    void keyIs(EncodedKey<S> const & key) noexcept {
        std::memcpy(bytes() + keyPlace, key.bytes(), S::keySize);
    }

    void valueIs(typename S::Value const & value) { S::encodeValue(value, bytes() + valuePlace); }

    /// The words with the checksum for slot `number`.
    Words const & sealed(U64 number) noexcept {
        words_[0] = sum(number);
        return words_;
    }

    /// The words, for reading into.
    Words & words() noexcept { return words_; }

    /// Raises `CorruptionDetectedException` unless the checksum is right for slot
    /// `number`.
    void check(std::string_view table, U64 number) const {
        if (words_[0] != sum(number)) [[unlikely]] {
            throwSlotChecksum(table, number, words_[0], sum(number));
        }
        if (bytes()[statePlace] > static_cast<U8>(SlotState::dead)) [[unlikely]] {
            throwSlotState(table, number, bytes()[statePlace]);
        }
    }

private:
    // The key comes first, aligned to a word: it is compared at every step of a search.
    static constexpr std::size_t keyPlace = 0;
    static constexpr std::size_t valuePlace = keyPlace + S::keySize;
    static constexpr std::size_t statePlace = valuePlace + S::valueSize;

    U64 sum(U64 number) const noexcept {
        return checksum(number, std::span(words_).template subspan<1>());
    }

    U8 * bytes() noexcept { return reinterpret_cast<U8 *>(words_.data() + 1); }

    U8 const * bytes() const noexcept { return reinterpret_cast<U8 const *>(words_.data() + 1); }

    Words words_{};
};

} // namespace Pelo
