#include "Vex/AllocTrack.h"

#include "Vex/Ptr.h"
#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// Records the tracker's reports, each with the number of objects constructed by then.
class Journal : public Vex::AllocTrackWatcher {
public:
    Journal() { Vex::allocTrackWatcherIs(this); }

    ~Journal() { Vex::allocTrackWatcherIs(nullptr); }

    Journal(Journal const &) = delete;
    Journal & operator=(Journal const &) = delete;

    void allocated(Vex::AllocTrackTypeInfo const & type, std::size_t size) noexcept override {
        add('+', type, size);
    }

    void released(Vex::AllocTrackTypeInfo const & type, std::size_t size) noexcept override {
        add('-', type, size);
    }

    std::string text;

private:
    void add(char sign, Vex::AllocTrackTypeInfo const & type, std::size_t size) noexcept {
        text += sign + std::string(type.name()) + " " + std::to_string(size) + " alive " +
                std::to_string(Counted::alive) + "\n";
        EXPECT_TRUE(type.type() == typeid(Counted));
    }
};

} // namespace

TEST(AllocTrack, ReportsTypeAndSizeBeforeAllocatingAndFreeing) {
    std::string const size = std::to_string(sizeof(Counted));
    Journal const journal;
    Vex::makePtr<Counted>(1);
    EXPECT_EQ(journal.text,
              "+Test::Counted " + size + " alive 0\n" + "-Test::Counted " + size + " alive 0\n");
}

TEST(AllocTrack, CountsLiveObjectsAndBytesPerType) {
    auto const live = [] { return Vex::allocTrackLiveCount("Test::Counted"); };
    Vex::U64 const before = live();
    auto first = Vex::makePtr<Counted>(1);
    auto const second = Vex::makePtr<Counted>(2);
    EXPECT_EQ(live(), before + 2);
    Vex::U64 bytes = 0;
    Vex::allocTrackForEach([&](Vex::AllocTrackTypeInfo const & type) {
        if (type.name() == std::string("Test::Counted")) {
            bytes = type.liveBytes();
        }
    });
    EXPECT_EQ(bytes, 2 * sizeof(Counted));
    first = nullptr;
    EXPECT_EQ(live(), before + 1);
}

TEST(AllocTrackDeathTest, EndsTheProcessIfThereIsNoMemory) {
    static Vex::AllocTrackTypeInfo huge{"Test::Huge", typeid(int)};
    EXPECT_DEATH(
        {
            // The sanitizers end the process themselves; in either case nothing is
            // thrown.
            try {
                Vex::allocTrackAllocate(huge, std::size_t{1} << 62);
            } catch (...) {
                std::_Exit(0);
            }
        },
        "");
}
