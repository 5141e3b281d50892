#pragma once

#include "Vex/RefCount.h"

namespace [[gnu::visibility("default")]] Vex {

/// The links of a tree node. What a node holds is the map's affair; shape and balance are
/// the same for every map, so they are written once, without types.
struct RbTreeNode {
    RbTreeNode * left = nullptr;
    RbTreeNode * right = nullptr;
    RbTreeNode * parent = nullptr;
    RefCount count;
    bool red = true;
};

/// A red-black tree without keys: it links, unlinks and steps.
class RbTree {
public:
    RbTree() = default;
    RbTree(RbTree const &) = delete;
    RbTree & operator=(RbTree const &) = delete;

    RbTreeNode * root() const noexcept { return root_; }

    RbTreeNode * first() const noexcept { return first_; }

    RbTreeNode * last() const noexcept { return last_; }

    /// Hangs `node` below `parent` (null for the first node of all), on its left or right,
    /// where nothing hangs yet, and restores the balance.
    void insert(RbTreeNode * node, RbTreeNode * parent, bool asLeft) noexcept;

    /// Takes `node` out and restores the balance. The node's own links are cleared.
    void erase(RbTreeNode * node) noexcept;

    /// The node behind `node` in key order, or null.
    static RbTreeNode * next(RbTreeNode const * node) noexcept;

    /// Forgets every node; whoever calls has them and lets them go.
    void reset() noexcept { root_ = first_ = last_ = nullptr; }

    void swap(RbTree & other) noexcept;

private:
    void rotate(RbTreeNode * node, bool toLeft) noexcept;
    void replace(RbTreeNode const * old, RbTreeNode * by) noexcept;
    void insertFixup(RbTreeNode * node) noexcept;
    void eraseFixup(RbTreeNode * node, RbTreeNode * parent) noexcept;

    RbTreeNode * root_ = nullptr;
    RbTreeNode * first_ = nullptr;
    RbTreeNode * last_ = nullptr;
};

} // namespace Vex
