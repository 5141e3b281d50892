#pragma once

#include "Pelo/CorruptionLog.h"
#include "Pelo/Reader.h"

#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// The part that the published tables have in common: the reader of the shared memory, and
/// the table's own answer to damage.
template <Schema S>
class Table : public CorruptionLog {
public:
    using TableSchema = S;
    using Key = typename S::Key;
    using Value = typename S::Value;
    using IteratorConst = Iterator<S>;

    /// What messages call the table.
    std::string const & name() const noexcept { return reader_.name(); }

    /// The number of live entries. Raises `CorruptionDetectedException`, as do the next two.
    U64 size() const { return reader_.size(); }

    /// Walks over the live keys in the order of their slots, which is that of a hash; both
    /// starting and stepping may raise.
    IteratorConst begin() const { return reader_.begin(); }

    std::default_sentinel_t end() const noexcept { return {}; }

    /// The value of `key`, or a default-made one when the table does not hold it.
    Value value(Key const & key) const { return reader_.value(key); }

    /// Makes the table read another region from now on. Walks under way stay where they are.
    void readerIs(Reader<S> reader) { reader_ = std::move(reader); }

protected:
    explicit Table(Reader<S> reader) : reader_(std::move(reader)) {}

    ~Table() = default;

private:
    Reader<S> reader_;
};

} // namespace Pelo
