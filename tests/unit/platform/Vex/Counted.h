#pragma once

#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"

#include <atomic>

/// A small entity for the framework's tests that counts its live objects.
class Counted : public Vex::Tracked<Counted, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "Test::Counted";

    explicit Counted(int number) : number_(number) { ++alive; }

    int const & number() const noexcept { return number_; }

    inline static std::atomic<int> alive = 0;

protected:
    ~Counted() override { --alive; }

private:
    int number_;
};
