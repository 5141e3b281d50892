#pragma once

#include "Vex/Iterator.h"
#include "Vex/RbTree.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// The framework's ordered collection: entries in ascending key order, at most one for a
/// key. `SlotType` (Slot.h) says what an entry is and where its key stands.
///
/// Nodes are counted, so that an iterator outlives the deletion of its entry. A version,
/// bumped whenever an entry comes or goes, tells an iterator that it must find its place
/// again. Filling in key order costs one comparison an entry: the last one is tried first.
template <class SlotType>
class RbTreeMap {
public:
    using Slot = SlotType;
    using Key = typename Slot::Key;
    using Iterator = CollectionIterator<RbTreeMap>;
    using const_iterator = Iterator;

    struct Node : RbTreeNode {
        explicit Node(Slot && s) : slot(std::move(s)) {}

        static void destroy(Node * node) noexcept { delete node; }

        Slot slot;
    };

    RbTreeMap() = default;

    RbTreeMap(RbTreeMap const & other) {
        for (auto const * node = other.tree_.first(); node; node = RbTree::next(node)) {
            upsert(Slot(static_cast<Node const *>(node)->slot));
        }
    }

    RbTreeMap(RbTreeMap && other) noexcept { swap(other); }

    ~RbTreeMap() { clear(); }

    RbTreeMap & operator=(RbTreeMap other) noexcept {
        swap(other);
        return *this;
    }

    Iterator begin() const noexcept { return Iterator(*this, toNode(tree_.first())); }

    Iterator end() const noexcept { return Iterator(*this, nullptr); }

    std::size_t size() const noexcept { return size_; }

    bool empty() const noexcept { return size_ == 0; }

    /// Changes whenever an entry is inserted or removed.
    U64 version() const noexcept { return version_; }

    /// The entry under `key`, or null; never inserts.
    Slot const * find(Key const & key) const {
        Node const * node = locate(key);
        return node ? &node->slot : nullptr;
    }

    Slot * find(Key const & key) {
        Node * node = locate(key);
        return node ? &node->slot : nullptr;
    }

    bool has(Key const & key) const { return locate(key) != nullptr; }

    /// Inserts `slot`, or overwrites the element of the entry with its key.
    void upsert(Slot slot) {
        Place const place = placeOf(slot.key());
        if (place.found) {
            place.found->slot.element() = std::move(slot.element());
        } else {
            insertAt(place, std::move(slot));
        }
    }

    /// The entry under `key`; when there is none, the one that `make()` returns, inserted.
    template <class Make>
    Slot & findOrInsert(Key const & key, Make && make) {
        Place const place = placeOf(key);
        return place.found ? place.found->slot : insertAt(place, std::forward<Make>(make)())->slot;
    }

    /// Takes the entry under `key` out and returns it; nothing when there is none.
    std::optional<Slot> remove(Key const & key) {
        Node * node = locate(key);
        return node ? std::optional<Slot>(takeOut(node)) : std::nullopt;
    }

    /// Takes out the entry on which `position` stands and returns it; nothing when it is at
    /// the end or its entry is gone already. The iterator keeps standing where the entry was.
    std::optional<Slot> remove(Iterator & position) {
        Node * node = position.node_.get();
        if (!node || locate(node->slot.key()) != node) {
            return std::nullopt;
        }
        return takeOut(node);
    }

    void clear() noexcept {
        // Children before parents, without recursion and without keeping the balance.
        RbTreeNode * node = tree_.root();
        tree_.reset();
        size_ = 0;
        ++version_;
        while (node) {
            if (node->left) {
                node = std::exchange(node->left, nullptr);
            } else if (node->right) {
                node = std::exchange(node->right, nullptr);
            } else {
                RbTreeNode * const above = std::exchange(node->parent, nullptr);
                NodeRef<Node>::release(toNode(node));
                node = above;
            }
        }
    }

    void swap(RbTreeMap & other) noexcept {
        tree_.swap(other.tree_);
        std::swap(size_, other.size_);
        ++version_;
        ++other.version_;
    }

    /// Entry by entry, key and element.
    friend bool operator==(RbTreeMap const & a, RbTreeMap const & b) {
        if (&a == &b) {
            return true;
        }
        if (a.size_ != b.size_) {
            return false;
        }
        auto const * x = a.tree_.first();
        auto const * y = b.tree_.first();
        for (; x; x = RbTree::next(x), y = RbTree::next(y)) {
            if (!(static_cast<Node const *>(x)->slot == static_cast<Node const *>(y)->slot)) {
                return false;
            }
        }
        return true;
    }

private:
    friend Iterator;

    /// Where a key stands, or where it would be hung.
    struct Place {
        Node * found;
        Node * parent;
        bool asLeft;
    };

    static Node * toNode(RbTreeNode * node) noexcept { return static_cast<Node *>(node); }

    Node * locate(Key const & key) const {
        Node * node = toNode(tree_.root());
        while (node) {
            auto const order = key <=> node->slot.key();
            if (order == 0) {
                return node;
            }
            node = toNode(order < 0 ? node->left : node->right);
        }
        return nullptr;
    }

    Place placeOf(Key const & key) const {
        if (Node * const last = toNode(tree_.last()); last && last->slot.key() < key) {
            return {nullptr, last, false};
        }
        Place place{nullptr, nullptr, false};
        Node * node = toNode(tree_.root());
        while (node) {
            auto const order = key <=> node->slot.key();
            if (order == 0) {
                place.found = node;
                return place;
            }
            place.parent = node;
            place.asLeft = order < 0;
            node = toNode(place.asLeft ? node->left : node->right);
        }
        return place;
    }

    Node * insertAt(Place const & place, Slot && slot) {
        auto * node = new Node(std::move(slot));
        node->count.up();
        tree_.insert(node, place.parent, place.asLeft);
        ++size_;
        ++version_;
        return node;
    }

    /// The removed slot is copied, not moved, out of a node that an iterator still shows.
    Slot takeOut(Node * node) {
        tree_.erase(node);
        --size_;
        ++version_;
        Slot taken = node->count.value() > 1 ? Slot(node->slot) : Slot(std::move(node->slot));
        NodeRef<Node>::release(node);
        return taken;
    }

    Node * following(Node const * node) const noexcept { return toNode(RbTree::next(node)); }

    /// The first entry whose key comes after that of `node`, which may be out of the tree.
    Node * firstBehind(Node const & node) const {
        decltype(auto) key = node.slot.key();
        Node * found = nullptr;
        Node * at = toNode(tree_.root());
        while (at) {
            if (key < at->slot.key()) {
                found = at;
                at = toNode(at->left);
            } else {
                at = toNode(at->right);
            }
        }
        return found;
    }

    RbTree tree_;
    std::size_t size_ = 0;
    U64 version_ = 0;
};

} // namespace Vex
