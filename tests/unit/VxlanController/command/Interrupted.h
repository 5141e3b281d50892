#pragma once

#include "Vex/AllocTrack.h"
#include "outfmt/Interrupt.h"

#include <functional>
#include <string>
#include <utility>

/// What `body` writes to standard output, where a command tells that it was interrupted.
std::string standardOutputOf(std::function<void()> const & body);

/// What a command has written to its descriptor and to standard output.
struct Interrupted {
    std::string printed;
    std::string said;
};

/// Calls `render` with a pipe to write to, and interrupts it when the first bytes arrive at
/// the other end, of which no more are read before.
Interrupted interruptedWhilePrinting(std::function<void(int fd)> const & render);

/// Interrupts as soon as an object of one type is made, and counts those that are made.
class InterruptAt : Vex::AllocTrackWatcher {
public:
    explicit InterruptAt(std::string type) : type_(std::move(type)) {
        Vex::allocTrackWatcherIs(this);
    }

    ~InterruptAt() { Vex::allocTrackWatcherIs(nullptr); }

    InterruptAt(InterruptAt const &) = delete;
    InterruptAt & operator=(InterruptAt const &) = delete;

    Vex::U32 made() const { return made_; }

private:
    void allocated(Vex::AllocTrackTypeInfo const & type, std::size_t) noexcept override {
        if (type.name() == type_) {
            ++made_;
            outfmt::requestInterrupt();
        }
    }

    void released(Vex::AllocTrackTypeInfo const &, std::size_t) noexcept override {}

    std::string type_;
    Vex::U32 made_ = 0;
};
