#pragma once

#include "Vex/Iterator.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// The framework's hashed collection, with the nodes and iterators of the ordered one.
///
/// Entries are ordered by hash, and entries with the same hash by key: the top bits of the
/// hash select the bucket, and every chain is kept sorted. So the iteration order depends
/// only on the content, not on the insertion order or the number of buckets, and an iterator
/// finds its place again by hash and key. The key's `std::hash` must be well mixed in its
/// top bits, and `keyedHash` if keys come from outside; the order is then another one in each
/// process, and nothing that is printed may depend on it.
///
/// If there is no memory for an entry, inserting it ends the process, as in every collection.
template <class SlotType>
class HashMap2018 {
public:
    using Slot = SlotType;
    using Key = typename Slot::Key;
    using Iterator = CollectionIterator<HashMap2018>;
    using const_iterator = Iterator;

    struct Node {
        Node(Slot && s, U64 h) : hash(h), slot(std::move(s)) {}

        static void destroy(Node * node) noexcept { delete node; }

        Node * next = nullptr;
        U64 hash;
        RefCount count;
        Slot slot;
    };

    HashMap2018() = default;

    HashMap2018(HashMap2018 const & other) {
        for (Iterator it = other.begin(); it; ++it) {
            upsert(Slot(it.slot()));
        }
    }

    HashMap2018(HashMap2018 && other) noexcept { swap(other); }

    ~HashMap2018() { clear(); }

    HashMap2018 & operator=(HashMap2018 other) noexcept {
        swap(other);
        return *this;
    }

    Iterator begin() const noexcept { return Iterator(*this, firstFrom(firstUsed_)); }

    Iterator end() const noexcept { return Iterator(*this, nullptr); }

    std::size_t size() const noexcept { return size_; }

    bool empty() const noexcept { return size_ == 0; }

    /// Changes whenever an entry is inserted or removed.
    U64 version() const noexcept { return version_; }

    /// The entry under `key`, or null; never inserts.
    Slot const * find(Key const & key) const {
        Node const * node = size_ ? *linkOf(hashOf(key), key) : nullptr;
        return matches(node, key) ? &node->slot : nullptr;
    }

    Slot * find(Key const & key) { return const_cast<Slot *>(std::as_const(*this).find(key)); }

    /// How many links a search for `key` follows: a measure of how well the hash spreads the
    /// keys that are here.
    std::size_t searchSteps(Key const & key) const {
        if (size_ == 0) {
            return 0;
        }
        U64 const hash = hashOf(key);
        Node ** const end = linkOf(hash, key);
        std::size_t steps = 1;
        for (Node ** link = &buckets_[bucketOf(hash)]; link != end; link = &(*link)->next) {
            ++steps;
        }
        return steps;
    }

    bool has(Key const & key) const { return find(key) != nullptr; }

    /// Inserts `slot`, or overwrites the element of the entry with its key.
    void upsert(Slot slot) {
        if (Slot * known = find(slot.key())) {
            known->element() = std::move(slot.element());
        } else {
            insert(std::move(slot));
        }
    }

    /// The entry under `key`; if there is none, inserts the one that `make()` returns.
    template <class Make>
    Slot & findOrInsert(Key const & key, Make && make) {
        Slot * known = find(key);
        return known ? *known : insert(std::forward<Make>(make)());
    }

    /// Removes the entry under `key` and returns it; nullopt if there is none.
    std::optional<Slot> remove(Key const & key) {
        if (size_ == 0) {
            return std::nullopt;
        }
        Node ** link = linkOf(hashOf(key), key);
        return matches(*link, key) ? std::optional<Slot>(extract(link)) : std::nullopt;
    }

    /// Removes the entry at `position` and returns it; nullopt if `position` is at the end or
    /// its entry has already been removed. The iterator keeps its place.
    std::optional<Slot> remove(Iterator & position) {
        Node const * node = position.node_.get();
        if (!node || size_ == 0) {
            return std::nullopt;
        }
        Node ** link = linkOf(node->hash, node->slot.key());
        return *link == node ? std::optional<Slot>(extract(link)) : std::nullopt;
    }

    void clear() noexcept {
        for (std::size_t bucket = 0; bucket < bucketCount(); ++bucket) {
            for (Node * node = buckets_[bucket]; node;) {
                NodeRef<Node>::release(std::exchange(node, std::exchange(node->next, nullptr)));
            }
        }
        buckets_.reset();
        bits_ = 0;
        firstUsed_ = 0;
        size_ = 0;
        ++version_;
    }

    void swap(HashMap2018 & other) noexcept {
        std::swap(buckets_, other.buckets_);
        std::swap(bits_, other.bits_);
        std::swap(firstUsed_, other.firstUsed_);
        std::swap(size_, other.size_);
        ++version_;
        ++other.version_;
    }

    /// Compares keys and elements, entry by entry.
    friend bool operator==(HashMap2018 const & a, HashMap2018 const & b) {
        if (&a == &b) {
            return true;
        }
        if (a.size_ != b.size_) {
            return false;
        }
        for (Iterator x = a.begin(), y = b.begin(); x; ++x, ++y) {
            if (!(x.slot() == y.slot())) {
                return false;
            }
        }
        return true;
    }

private:
    friend Iterator;

    static U64 hashOf(Key const & key) noexcept { return std::hash<Key>()(key); }

    static bool matches(Node const * node, Key const & key) {
        return node && node->slot.key() == key;
    }

    std::size_t bucketCount() const noexcept { return buckets_ ? std::size_t{1} << bits_ : 0; }

    std::size_t bucketOf(U64 hash) const noexcept {
        return bits_ == 0 ? 0 : static_cast<std::size_t>(hash >> (64U - bits_));
    }

    /// The link that points to the entry with this hash and key, or to the entry before
    /// which it belongs.
    Node ** linkOf(U64 hash, Key const & key) const {
        Node ** link = &buckets_[bucketOf(hash)];
        while (*link &&
               ((*link)->hash < hash || ((*link)->hash == hash && (*link)->slot.key() < key))) {
            link = &(*link)->next;
        }
        return link;
    }

    Node * firstFrom(std::size_t bucket) const noexcept {
        for (; bucket < bucketCount(); ++bucket) {
            if (buckets_[bucket]) {
                return buckets_[bucket];
            }
        }
        return nullptr;
    }

    Node * following(Node const * node) const noexcept {
        return node->next ? node->next : firstFrom(bucketOf(node->hash) + 1);
    }

    /// The first entry after the place of `node`, which can already be removed.
    Node * firstAfter(Node const & node) const {
        if (size_ == 0) {
            return nullptr;
        }
        Node * at = *linkOf(node.hash, node.slot.key());
        if (matches(at, node.slot.key())) {
            at = at->next;
        }
        return at ? at : firstFrom(bucketOf(node.hash) + 1);
    }

    static Node * newNode(Slot && slot, U64 hash) {
        auto * const node = new Node(std::move(slot), hash);
        node->count.up();
        return node;
    }

    Slot & insert(Slot && slot) noexcept {
        if (size_ == bucketCount()) {
            grow();
        }
        U64 const hash = hashOf(slot.key());
        Node ** link = linkOf(hash, slot.key());
        Node * const node = newNode(std::move(slot), hash);
        node->next = *link;
        *link = node;
        firstUsed_ = std::min(firstUsed_, narrowed(bucketOf(hash)));
        ++size_;
        ++version_;
        return node->slot;
    }

    void grow() {
        unsigned const bits = buckets_ ? bits_ + 1 : 0;
        auto larger = std::make_unique<Node *[]>(std::size_t{1} << bits);
        std::size_t const oldCount = bucketCount();
        auto const old = std::exchange(buckets_, std::move(larger));
        bits_ = bits;
        firstUsed_ = narrowed(std::size_t{2} * firstUsed_);
        for (std::size_t bucket = 0; bucket < oldCount; ++bucket) {
            for (Node * node = old[bucket]; node;) {
                Node * const rest = std::exchange(node->next, nullptr);
                Node ** link = linkOf(node->hash, node->slot.key());
                node->next = *link;
                *link = node;
                node = rest;
            }
        }
    }

    static U32 narrowed(std::size_t bucket) noexcept {
        return static_cast<U32>(std::min<std::size_t>(bucket, std::numeric_limits<U32>::max()));
    }

    void skipUnusedBuckets() noexcept {
        std::size_t bucket = size_ == 0 ? bucketCount() : firstUsed_;
        while (bucket < bucketCount() && !buckets_[bucket]) {
            ++bucket;
        }
        firstUsed_ = narrowed(bucket);
    }

    /// The slot is copied, not moved, out of a node that an iterator still refers to.
    Slot extract(Node ** link) {
        Node * const node = *link;
        *link = std::exchange(node->next, nullptr);
        --size_;
        ++version_;
        skipUnusedBuckets();
        Slot taken = node->count.value() > 1 ? Slot(node->slot) : Slot(std::move(node->slot));
        NodeRef<Node>::release(node);
        return taken;
    }

    std::unique_ptr<Node *[]> buckets_;
    unsigned bits_ = 0;
    /// No bucket before this one has an entry. Without this, each removal of the first
    /// entry would search more empty buckets than the one before.
    U32 firstUsed_ = 0;
    std::size_t size_ = 0;
    U64 version_ = 0;
};

} // namespace Vex
