#include "Vex/RbTree.h"

#include <utility>

namespace Vex {

namespace {

bool isRed(RbTreeNode const * node) noexcept {
    return node && node->red;
}

RbTreeNode *& child(RbTreeNode * node, bool left) noexcept {
    return left ? node->left : node->right;
}

RbTreeNode * leftmost(RbTreeNode * node) noexcept {
    while (node->left) {
        node = node->left;
    }
    return node;
}

RbTreeNode * rightmost(RbTreeNode * node) noexcept {
    while (node->right) {
        node = node->right;
    }
    return node;
}

} // namespace

RbTreeNode * RbTree::next(RbTreeNode const * node) noexcept {
    if (node->right) {
        return leftmost(node->right);
    }
    RbTreeNode * above = node->parent;
    while (above && node == above->right) {
        node = above;
        above = above->parent;
    }
    return above;
}

void RbTree::swap(RbTree & other) noexcept {
    std::swap(root_, other.root_);
    std::swap(first_, other.first_);
    std::swap(last_, other.last_);
}

void RbTree::replace(RbTreeNode const * old, RbTreeNode * by) noexcept {
    RbTreeNode * const above = old->parent;
    if (!above) {
        root_ = by;
    } else {
        child(above, above->left == old) = by;
    }
    if (by) {
        by->parent = above;
    }
}

void RbTree::rotate(RbTreeNode * node, bool toLeft) noexcept {
    RbTreeNode * const riser = child(node, !toLeft);
    RbTreeNode * const inner = child(riser, toLeft);
    child(node, !toLeft) = inner;
    if (inner) {
        inner->parent = node;
    }
    replace(node, riser);
    child(riser, toLeft) = node;
    node->parent = riser;
}

void RbTree::insert(RbTreeNode * node, RbTreeNode * parent, bool asLeft) noexcept {
    node->left = node->right = nullptr;
    node->parent = parent;
    node->red = true;
    if (!parent) {
        root_ = first_ = last_ = node;
    } else {
        child(parent, asLeft) = node;
        if (asLeft && parent == first_) {
            first_ = node;
        } else if (!asLeft && parent == last_) {
            last_ = node;
        }
    }
    insertFixup(node);
}

void RbTree::insertFixup(RbTreeNode * node) noexcept {
    while (isRed(node->parent)) {
        RbTreeNode * parent = node->parent;
        RbTreeNode * const grand = parent->parent;
        bool const parentIsLeft = parent == grand->left;
        RbTreeNode * const uncle = child(grand, !parentIsLeft);
        if (isRed(uncle)) {
            parent->red = uncle->red = false;
            grand->red = true;
            node = grand;
            continue;
        }
        if (node == child(parent, !parentIsLeft)) {
            rotate(parent, parentIsLeft);
            parent = node;
        }
        parent->red = false;
        grand->red = true;
        rotate(grand, !parentIsLeft);
        break;
    }
    root_->red = false;
}

void RbTree::erase(RbTreeNode * node) noexcept {
    if (node == first_) {
        first_ = next(node);
    }
    if (node == last_) {
        last_ = node->left ? rightmost(node->left) : node->parent;
    }

    RbTreeNode * hole = nullptr;
    RbTreeNode * holeParent = nullptr;
    bool removedRed = node->red;
    if (!node->left || !node->right) {
        hole = node->left ? node->left : node->right;
        holeParent = node->parent;
        replace(node, hole);
    } else {
        RbTreeNode * const heir = leftmost(node->right);
        removedRed = heir->red;
        hole = heir->right;
        if (heir->parent == node) {
            holeParent = heir;
        } else {
            holeParent = heir->parent;
            replace(heir, hole);
            heir->right = node->right;
            heir->right->parent = heir;
        }
        replace(node, heir);
        heir->left = node->left;
        heir->left->parent = heir;
        heir->red = node->red;
    }
    if (!removedRed) {
        eraseFixup(hole, holeParent);
    }
    node->left = node->right = node->parent = nullptr;
}

void RbTree::eraseFixup(RbTreeNode * node, RbTreeNode * parent) noexcept {
    while (node != root_ && !isRed(node)) {
        bool const nodeIsLeft = node == parent->left;
        RbTreeNode * sibling = child(parent, !nodeIsLeft);
        if (isRed(sibling)) {
            sibling->red = false;
            parent->red = true;
            rotate(parent, nodeIsLeft);
            sibling = child(parent, !nodeIsLeft);
        }
        if (!isRed(sibling->left) && !isRed(sibling->right)) {
            sibling->red = true;
            node = parent;
            parent = node->parent;
            continue;
        }
        if (!isRed(child(sibling, !nodeIsLeft))) {
            child(sibling, nodeIsLeft)->red = false;
            sibling->red = true;
            rotate(sibling, !nodeIsLeft);
            sibling = child(parent, !nodeIsLeft);
        }
        sibling->red = parent->red;
        parent->red = false;
        child(sibling, !nodeIsLeft)->red = false;
        rotate(parent, nodeIsLeft);
        node = root_;
        break;
    }
    if (node) {
        node->red = false;
    }
}

} // namespace Vex
