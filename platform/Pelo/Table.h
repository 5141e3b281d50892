#pragma once

#include "Pelo/CorruptionLog.h"
#include "Pelo/Reader.h"

#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// The common part of the published tables: the reader of the shared memory, and the
/// record of damage.
template <Schema S>
class Table : public CorruptionLog {
public:
    using TableSchema = S;
    using Key = typename S::Key;
    using Value = typename S::Value;
    using IteratorConst = Iterator<S>;

    /// The table's name in messages.
    std::string const & name() const noexcept { return reader_.name(); }

    /// The number of live entries. Can raise `CorruptionDetectedException`, as can the next
    /// two functions.
    U64 size() const { return reader_.size(); }

    /// Iterates over the live keys in the order of their slots, which is a hash order;
    /// both the call and each step can raise.
    IteratorConst begin() const { return reader_.begin(); }

    std::default_sentinel_t end() const noexcept { return {}; }

    /// The value of `key`, or a default one if the table does not have it.
    Value value(Key const & key) const { return reader_.value(key); }

    /// Makes the table read another region from now on. Walks in progress stay on the old
    /// one.
    void readerIs(Reader<S> reader) { reader_ = std::move(reader); }

protected:
    explicit Table(Reader<S> reader) : reader_(std::move(reader)) {}

    ~Table() = default;

private:
    Reader<S> reader_;
};

} // namespace Pelo
