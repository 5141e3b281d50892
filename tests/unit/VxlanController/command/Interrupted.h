#pragma once

#include "Vex/AllocTrack.h"
#include "outfmt/Interrupt.h"

#include <functional>
#include <string>
#include <utility>

/// What `body` writes to standard output, where a command reports that it was interrupted.
std::string standardOutputOf(std::function<void()> const & body);

/// What a command has written to its descriptor and to standard output.
struct Interrupted {
    std::string printed;
    std::string standardOutput;
};

/// Calls `render` with the write end of a pipe, and interrupts it when the first bytes arrive at
/// the other end. Nothing more is read before that.
Interrupted interruptedWhilePrinting(std::function<void(int fd)> const & render);

/// Interrupts when an object of one type is created, and counts those created.
class InterruptOnCreation : Vex::AllocTrackWatcher {
public:
    explicit InterruptOnCreation(std::string type) : type_(std::move(type)) {
        Vex::allocTrackWatcherIs(this);
    }

    ~InterruptOnCreation() { Vex::allocTrackWatcherIs(nullptr); }

    InterruptOnCreation(InterruptOnCreation const &) = delete;
    InterruptOnCreation & operator=(InterruptOnCreation const &) = delete;

    Vex::U32 created() const { return created_; }

private:
    void allocated(Vex::AllocTrackTypeInfo const & type, std::size_t) noexcept override {
        if (type.name() == type_) {
            ++created_;
            outfmt::requestInterrupt();
        }
    }

    void released(Vex::AllocTrackTypeInfo const &, std::size_t) noexcept override {}

    std::string type_;
    Vex::U32 created_ = 0;
};
