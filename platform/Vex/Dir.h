#pragma once

#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/HashMap.h"
#include "Vex/Name.h"
#include "Vex/Ptr.h"

namespace [[gnu::visibility("default")]] Vex {

/// A directory of the published state tree: names, each of an entity or of a
/// subdirectory. Filled by the code that mounts the state, then looked up and walked by
/// its readers.
class Dir : public Tracked<Dir, PtrInterface> {
public:
    static constexpr char const * vexTypeName = "Vex::Dir";

    /// The entry under one name: exactly one of the two pointers is set.
    class Entry {
    public:
        using Key = Name;
        using Element = Entry;

        Entry(Name name, Ptr<Entity const> entity, Ptr<Dir> dir)
            : name_(std::move(name)), entity_(std::move(entity)), dir_(std::move(dir)) {}

        Name const & key() const noexcept { return name_; }

        Entry const & view() const noexcept { return *this; }

        Entry & element() noexcept { return *this; }

        /// The name, the same as the key.
        Name const & name() const noexcept { return name_; }

        /// The entity, or null if this is a directory.
        Ptr<Entity const> const & entity() const noexcept { return entity_; }

        /// The directory, or null if this is an entity.
        Ptr<Dir> const & dir() const noexcept { return dir_; }

    private:
        Name name_;
        Ptr<Entity const> entity_;
        Ptr<Dir> dir_;
    };

    using Entries = HashMap2018<Entry>;

    /// Iterates over the entities in the hash order of their names and skips directories.
    class EntityIterator {
    public:
        explicit EntityIterator(Entries::Iterator at) : at_(std::move(at)) { toEntity(); }

        explicit operator bool() const noexcept { return static_cast<bool>(at_); }

        Name const & name() const noexcept { return at_->name(); }

        Ptr<Entity const> const & entity() const noexcept { return at_->entity(); }

        EntityIterator & operator++() {
            ++at_;
            toEntity();
            return *this;
        }

    private:
        void toEntity() {
            while (at_ && !at_->entity()) {
                ++at_;
            }
        }

        Entries::Iterator at_;
    };

    Dir() = default;

    /// The entity under `name`; null if there is no such entry or it is a directory.
    Ptr<Entity const> entityPtr(Name const & name) const;

    /// The entry under `name`, of either kind, or null. The directory owns it; it stays
    /// valid until that entry is changed.
    Entry const * entryState(Name const & name) const { return entries_.find(name); }

    /// Iterates over the entities of this directory.
    EntityIterator entityPtrIteratorConst() const { return EntityIterator(entries_.begin()); }

    /// Stores `entity` under `name` in place of any earlier entry; null removes the
    /// entry.
    void entityIs(Name const & name, Ptr<Entity const> entity);

    /// The directory under `name`, created if there is none (it then replaces an entity).
    Ptr<Dir> dirIs(Name const & name);

    /// The number of names in the directory.
    std::size_t size() const noexcept { return entries_.size(); }

private:
    Entries entries_;
};

} // namespace Vex
