#pragma once

#include "Pelo/Reader.h"
#include "Pelo/Writer.h"
#include "Vex/Ptr.h"

#include <optional>
#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// A writer together with a published table that reads what it writes, for a process that
/// fills a table in order to read it itself.
///
/// T is an entity derived from `Table<...>`. Its table reads the shared memory as any other
/// process would, through a mapping of its own, and follows the writer when it moves.
template <class T>
class TableWriter {
public:
    using Key = typename T::Key;
    using Value = typename T::Value;

    /// Makes an empty table in memory, with room for `entries` before it has to be moved.
    /// Raises `TableError`.
    explicit TableWriter(std::string name, U64 entries = 0)
        : TableWriter(Writer<Schema>::inMemory(std::move(name), entries)) {}

    /// As the constructor, in a file that takes the place of whatever is there under `path`.
    static TableWriter inFile(std::string path, U64 entries = 0) {
        return TableWriter(Writer<Schema>::inFile(std::move(path), entries));
    }

    /// What messages call the table.
    std::string const & name() const noexcept { return writer_.name(); }

    /// The number of live entries.
    U64 size() const noexcept { return writer_.size(); }

    /// The table's memory, for readers elsewhere. Another one after the table has moved.
    int descriptor() const noexcept { return writer_.descriptor(); }

    /// Stores `value` under `key`; returns whether the table did not hold the key before. A
    /// default-made value is a dead slot to readers, who still meet its key. Errors as for
    /// `Writer::insert`.
    bool insert(Key const & key, Value const & value) {
        auto const moves = writer_.moves();
        bool const added = writer_.insert(key, value);
        if (writer_.moves() != moves) {
            table_->readerIs(reader());
        }
        return added;
    }

    /// Takes `key` out; returns whether the table held it. Raises
    /// `CorruptionDetectedException`.
    bool erase(Key const & key) { return writer_.erase(key); }

    /// The value of `key`, or nothing. Raises `CorruptionDetectedException`.
    std::optional<Value> find(Key const & key) const { return writer_.find(key); }

    /// The table that reads the same memory: the same object every time. It may outlive the
    /// writer.
    Vex::Ptr<T> const & table() const noexcept { return table_; }

private:
    using Schema = typename T::TableSchema;

    explicit TableWriter(Writer<Schema> writer)
        : writer_(std::move(writer)), table_(Vex::makePtr<T>(reader())) {}

    Reader<Schema> reader() const {
        return Reader<Schema>::attach(writer_.descriptor(), writer_.name());
    }

    Writer<Schema> writer_;
    Vex::Ptr<T> table_;
};

} // namespace Pelo
