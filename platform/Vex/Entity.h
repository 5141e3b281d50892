#pragma once

#include "Vex/RefCount.h"

namespace [[gnu::visibility("default")]] Vex {

struct Type;

/// The root of everything that is shared through `Ptr`: it carries the count and dies with
/// the last holder. Entities are never copied.
class PtrInterface {
public:
    PtrInterface(PtrInterface const &) = delete;
    PtrInterface & operator=(PtrInterface const &) = delete;

    /// The reflection record of the object's run-time type.
    virtual Type const & fwkType() const noexcept;

    /// Whether changes of the object are announced to whoever watches it. Off while the
    /// constructor runs; whoever makes an entity switches it on before handing it out.
    bool hasNotificationActive() const noexcept { return notificationActive_; }

    void hasNotificationActiveIs(bool active) noexcept { notificationActive_ = active; }

    /// One holder more. Called by `Ptr` alone.
    void newRef() const noexcept { count_.up(); }

    /// One holder less; the last one destroys the object. Called by `Ptr` alone.
    void deleteRef() const noexcept {
        if (count_.down()) {
            delete this;
        }
    }

    /// How many hold the object at this moment.
    U32 references() const noexcept { return count_.value(); }

protected:
    PtrInterface() = default;
    virtual ~PtrInterface();

private:
    RefCount count_;
    bool notificationActive_ = false;
};

/// An entity that can stand in a directory of published state.
class Entity : public PtrInterface {
public:
    Type const & fwkType() const noexcept override;

protected:
    Entity() = default;
    ~Entity() override;
};

} // namespace Vex
