#pragma once

#include "Vex/RefCount.h"

namespace [[gnu::visibility("default")]] Vex {

struct Type;

/// The root of everything that is shared through `Ptr`: it holds the reference count and
/// is destroyed with the last `Ptr`. Entities are never copied.
class PtrInterface {
public:
    PtrInterface(PtrInterface const &) = delete;
    PtrInterface & operator=(PtrInterface const &) = delete;

    /// The reflection record of this class, which has no attributes.
    static Type const _vexType;

    /// The reflection record of the object's run-time type.
    virtual Type const & fwkType() const noexcept;

    /// Whether changes to the object are announced to its observers. Off while the
    /// constructor runs; the code that creates an entity switches it on before handing it
    /// out.
    bool hasNotificationActive() const noexcept { return notificationActive_; }

    void hasNotificationActiveIs(bool active) noexcept { notificationActive_ = active; }

    /// Adds a reference. Called only by `Ptr`.
    void newRef() const noexcept { count_.up(); }

    /// Drops a reference and destroys the object if it was the last. Called only by
    /// `Ptr`.
    void deleteRef() const noexcept {
        if (count_.down()) {
            delete this;
        }
    }

    /// The current number of references.
    U32 references() const noexcept { return count_.value(); }

protected:
    PtrInterface() = default;
    virtual ~PtrInterface();

private:
    RefCount count_;
    bool notificationActive_ = false;
};

/// An entity that can be listed in a directory of published state.
class Entity : public PtrInterface {
public:
    /// The reflection record of this class, which has no attributes.
    static Type const _vexType;

    Type const & fwkType() const noexcept override;

protected:
    Entity() = default;
    ~Entity() override;
};

} // namespace Vex
