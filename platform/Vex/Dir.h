#pragma once

#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/HashMap.h"
#include "Vex/Name.h"
#include "Vex/Ptr.h"

namespace [[gnu::visibility("default")]] Vex {

/// A directory of the published state tree: names, each of an entity or of a directory
/// below this one. Looked up and walked by many, filled by the one who mounts the state.
class Dir : public Tracked<Dir, PtrInterface> {
public:
    static constexpr char const * vexTypeName = "Vex::Dir";

    /// What stands under one name: exactly one of the two pointers is set.
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

        /// The entity, or null when a directory stands here.
        Ptr<Entity const> const & entity() const noexcept { return entity_; }

        /// The directory, or null when an entity stands here.
        Ptr<Dir> const & dir() const noexcept { return dir_; }

    private:
        Name name_;
        Ptr<Entity const> entity_;
        Ptr<Dir> dir_;
    };

    using Entries = HashMap2018<Entry>;

    /// A walk over the entities, in the hash order of their names; directories are passed over.
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

    /// The entity under `name`; null when nothing, or a directory, stands there.
    Ptr<Entity const> entityPtr(Name const & name) const;

    /// The entry under `name`, whatever stands there, or null. It is the directory's own
    /// and stays valid until that entry is changed.
    Entry const * entryState(Name const & name) const { return entries_.find(name); }

    /// A walk over the entities of this directory.
    EntityIterator entityPtrIteratorConst() const { return EntityIterator(entries_.begin()); }

    /// Puts `entity` under `name` in place of whatever stands there; null removes it.
    void entityIs(Name const & name, Ptr<Entity const> entity);

    /// The directory under `name`, made when none stands there (an entity would be replaced).
    Ptr<Dir> dirIs(Name const & name);

    /// How many names the directory holds.
    std::size_t size() const noexcept { return entries_.size(); }

private:
    Entries entries_;
};

} // namespace Vex
