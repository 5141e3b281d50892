#pragma once

#include "Vex/AnyValue.h"

#include <memory>

namespace [[gnu::visibility("default")]] Vex {

/// Iterates over a collection of any type with the guarantees of the collections' own
/// iterators: an entry that is removed stays readable, and the next step finds its place by
/// key.
class AnyIterator {
public:
    /// The walk itself, over one type of collection.
    class Walk {
    public:
        Walk() = default;
        Walk(Walk const &) = delete;
        Walk & operator=(Walk const &) = delete;
        virtual ~Walk() = default;

        virtual bool atEntry() const noexcept = 0;
        virtual AnyValue key() const = 0;
        virtual AnyValue element() const = 0;
        virtual void step() = 0;
    };

    explicit AnyIterator(std::unique_ptr<Walk> walk) noexcept : walk_(std::move(walk)) {}

    /// False past the last entry, where nothing else may be called.
    explicit operator bool() const noexcept { return walk_->atEntry(); }

    /// The key of the entry.
    AnyValue key() const { return walk_->key(); }

    /// What the entry holds under its key: a value, a pointer, or the bool of a set.
    AnyValue element() const { return walk_->element(); }

    AnyIterator & operator++() {
        walk_->step();
        return *this;
    }

private:
    std::unique_ptr<Walk> walk_;
};

} // namespace Vex
