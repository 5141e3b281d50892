#pragma once

#include "Vex/RefCount.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// A counted reference to a collection's node, which lives as long as the collection or
/// any iterator refers to it. Node is counted (`count`) and destroyed with
/// `Node::destroy`.
template <class Node>
class NodeRef {
public:
    constexpr NodeRef() noexcept = default;

    explicit NodeRef(Node * node) noexcept : node_(node) { hold(); }

    NodeRef(NodeRef const & other) noexcept : node_(other.node_) { hold(); }

    NodeRef(NodeRef && other) noexcept : node_(std::exchange(other.node_, nullptr)) {}

    ~NodeRef() { release(node_); }

    NodeRef & operator=(NodeRef other) noexcept {
        std::swap(node_, other.node_);
        return *this;
    }

    Node * get() const noexcept { return node_; }

    /// Releases one reference to `node`, which can be null.
    static void release(Node * node) noexcept {
        if (node && node->count.down()) {
            Node::destroy(node);
        }
    }

private:
    void hold() const noexcept {
        if (node_) {
            node_->count.up();
        }
    }

    Node * node_ = nullptr;
};

/// A forward iterator over a keyed collection.
///
/// It holds a reference to its node, so that key and element stay readable after the entry
/// is removed. If the collection has changed since the last step, the next step finds its
/// place again by key: it reaches entries inserted after the current one and never returns
/// an entry twice. The collection itself must outlive every step.
template <class Map>
class CollectionIterator {
public:
    using Node = typename Map::Node;
    using Slot = typename Map::Slot;
    using iterator_category = std::forward_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;
    using value_type = std::remove_cvref_t<decltype(std::declval<Slot const &>().view())>;
    using reference = decltype(std::declval<Slot const &>().view());
    using pointer = value_type const *;
    using difference_type = std::ptrdiff_t;

    CollectionIterator() = default;

    CollectionIterator(Map const & map, Node * node) noexcept
        : map_(&map), node_(node), version_(map.version()) {}

    /// False at the end of the collection.
    explicit operator bool() const noexcept { return node_.get() != nullptr; }

    reference operator*() const noexcept { return node_.get()->slot.view(); }

    pointer operator->() const noexcept { return &node_.get()->slot.view(); }

    /// The key of the entry.
    decltype(auto) key() const { return node_.get()->slot.key(); }

    /// The whole entry: key and element.
    Slot const & slot() const noexcept { return node_.get()->slot; }

    CollectionIterator & operator++() {
        Node * node = node_.get();
        if (version_ == map_->version()) {
            node_ = NodeRef<Node>(map_->following(node));
        } else {
            node_ = NodeRef<Node>(map_->firstAfter(*node));
            version_ = map_->version();
        }
        return *this;
    }

    CollectionIterator operator++(int) {
        CollectionIterator before = *this;
        ++*this;
        return before;
    }

    /// Equal when both refer to the same entry or both are at the end.
    friend bool operator==(CollectionIterator const & a, CollectionIterator const & b) noexcept {
        return a.node_.get() == b.node_.get();
    }

private:
    friend Map;

    Map const * map_ = nullptr;
    NodeRef<Node> node_;
    U64 version_ = 0;
};

} // namespace Vex
