#pragma once

#include "Vex/RefCount.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// A holder of a collection's node: the node lives as long as the collection or any
/// iterator holds it. Node is counted (`count`) and destroyed with `Node::destroy`.
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

    /// Gives up one hold on `node`, which may be null.
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
/// It holds the node on which it stands, so that key and element stay readable when the
/// node is deleted under it. When the collection has changed since the last step, the next
/// one finds its place again by key: entries inserted behind it are met, none is met twice.
/// The collection itself must outlive every step.
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

    /// The entry whole: key and element.
    Slot const & slot() const noexcept { return node_.get()->slot; }

    CollectionIterator & operator++() {
        Node * node = node_.get();
        if (version_ == map_->version()) {
            node_ = NodeRef<Node>(map_->following(node));
        } else {
            node_ = NodeRef<Node>(map_->firstBehind(*node));
            version_ = map_->version();
        }
        return *this;
    }

    CollectionIterator operator++(int) {
        CollectionIterator before = *this;
        ++*this;
        return before;
    }

    /// Equal when both stand on the same entry, or both at an end.
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
