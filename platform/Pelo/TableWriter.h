#pragma once

#include "Pelo/Reader.h"
#include "Pelo/Writer.h"
#include "Vex/Ptr.h"

#include <optional>
#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// A writer with a published table that reads what it writes, for a process that fills a
/// table and reads it itself.
///
/// T is an entity derived from `Table<...>`. Its table reads the shared memory as any other
/// process would, through a mapping of its own, and follows the writer when it moves. Memory of
/// this process alone has one mapping for both.
template <class T>
class TableWriter {
public:
    using Key = typename T::Key;
    using Value = typename T::Value;

    /// Creates an empty table in memory, with room for `entries` entries before it must
    /// move. Raises `TableError`.
    explicit TableWriter(std::string name, U64 entries = 0)
        : TableWriter(Writer<Schema>::inMemory(std::move(name), entries)) {}

    /// As the constructor, but in a file, which replaces any existing file at `path`.
    static TableWriter inFile(std::string path, U64 entries = 0) {
        return TableWriter(Writer<Schema>::inFile(std::move(path), entries));
    }

    /// As the constructor, but in memory of this process alone: see `Writer::inOwnMemory`.
    static TableWriter inOwnMemory(std::string name, U64 entries = 0) {
        return TableWriter(Writer<Schema>::inOwnMemory(std::move(name), entries));
    }

    /// The table's name in messages.
    std::string const & name() const noexcept { return writer_.name(); }

    /// The number of live entries.
    U64 size() const noexcept { return writer_.size(); }

    /// The table's memory, for readers elsewhere; negative if it is this process's own. Changes
    /// when the table moves.
    int descriptor() const noexcept { return writer_.descriptor(); }

    /// Stores `value` under `key`; returns whether the key is new. To readers a default
    /// value is a dead slot, but their walks still reach its key. Raises the same errors as
    /// `Writer::insert`.
    bool insert(Key const & key, Value const & value) {
        auto const moves = writer_.moves();
        bool const added = writer_.insert(key, value);
        if (writer_.moves() != moves) {
            table_->readerIs(reader());
        }
        return added;
    }

    /// Removes `key`; returns whether the table had it. Raises
    /// `CorruptionDetectedException`.
    bool erase(Key const & key) { return writer_.erase(key); }

    /// The value of `key`, or nullopt. Can raise `CorruptionDetectedException`.
    std::optional<Value> find(Key const & key) const { return writer_.find(key); }

    /// The table that reads the same memory; always the same object. It can outlive the
    /// writer.
    Vex::Ptr<T> const & table() const noexcept { return table_; }

private:
    using Schema = typename T::TableSchema;

    explicit TableWriter(Writer<Schema> writer)
        : writer_(std::move(writer)), table_(Vex::makePtr<T>(reader())) {}

    Reader<Schema> reader() const {
        return writer_.descriptor() < 0
                   ? Reader<Schema>::of(writer_.mapping(), writer_.name())
                   : Reader<Schema>::attach(writer_.descriptor(), writer_.name());
    }

    Writer<Schema> writer_;
    Vex::Ptr<T> table_;
};

} // namespace Pelo
