#include "tests/unit/modelc/generated/Fleet.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace Test::Fleet {

// Methods are declared by the model and implemented by hand.
void Vessel::sail(U32 knots, Vex::Name to, Vex::Ptr<Sea::Chart const> const & by) {
    draftIs(Sea::Depth(knots + by->sheet() + static_cast<U32>(to.stringValue().size())));
}

namespace {

U64 liveObjects() {
    return Vex::allocTrackLiveCount("Test::Fleet::");
}

/// Records what the allocation tracker is told.
class Watcher : public Vex::AllocTrackWatcher {
public:
    Watcher() { Vex::allocTrackWatcherIs(this); }

    Watcher(Watcher const &) = delete;
    Watcher & operator=(Watcher const &) = delete;

    ~Watcher() { Vex::allocTrackWatcherIs(nullptr); }

    void allocated(Vex::AllocTrackTypeInfo const & type, std::size_t size) noexcept override {
        events_ += std::string("+") + type.name() + ":" + std::to_string(size) + " ";
    }

    void released(Vex::AllocTrackTypeInfo const & type, std::size_t size) noexcept override {
        events_ += std::string("-") + type.name() + ":" + std::to_string(size) + " ";
    }

    std::string const & events() const { return events_; }

private:
    std::string events_;
};

} // namespace

TEST(GeneratedEntity, IsSharedAndNeverCopied) {
    static_assert(std::is_base_of_v<Vex::PtrInterface, Harbour>);
    static_assert(std::is_same_v<Harbour::Ptr, Vex::Ptr<Harbour>>);
    static_assert(std::is_same_v<Harbour::PtrConst, Vex::Ptr<Harbour const>>);
    static_assert(!std::is_copy_constructible_v<Harbour> && !std::is_copy_assignable_v<Harbour>);
    static_assert(std::has_virtual_destructor_v<Harbour>);
    static_assert(std::is_base_of_v<Vessel, Ferry>);
}

TEST(GeneratedFactory, ReturnsAnActiveObjectWithOneReference) {
    auto const harbour = harbourFactory();
    EXPECT_TRUE(harbour->hasNotificationActive());
    EXPECT_EQ(harbour->references(), 1U);
    Harbour::PtrConst const shared = harbour;
    EXPECT_EQ(harbour->references(), 2U);
    EXPECT_FALSE(Vex::makePtr<Harbour>()->hasNotificationActive())
        << "the constructor alone leaves it off";
}

TEST(GeneratedCreator, ReturnsAnActiveObject) {
    auto const hold = Hold::HoldIs("bow");
    EXPECT_TRUE(hold->hasNotificationActive());
    EXPECT_EQ(hold->name(), "bow");
    EXPECT_TRUE(Log::LogIs()->hasNotificationActive());
}

TEST(GeneratedEntity, PassesArgumentsToItsBase) {
    auto const chart = Vex::makePtr<Sea::Chart>(4U);
    auto const ferry = ferryFactory("Silja", chart, "Turku", 400);
    EXPECT_EQ(ferry->name(), "Silja");
    EXPECT_EQ(ferry->chart(), chart);
    EXPECT_EQ(ferry->route(), "Turku");
    EXPECT_EQ(ferry->cars(), 400U);
    EXPECT_TRUE(!ferry->voyage());
    ferry->holdIs("deck");
    EXPECT_EQ(keysOf(ferry->hold()), "deck ");
    EXPECT_EQ(Vex::Ptr<Vessel const>(ferry)->name(), "Silja");
}

TEST(GeneratedEntity, HasItsMethodsAndConstants) {
    auto const chart = Vex::makePtr<Sea::Chart>(4U);
    auto const ferry = ferryFactory("Silja", chart, "Turku", 400);
    ferry->sail(10, "Mariehamn", chart);
    EXPECT_EQ(ferry->draft().metres(), 23U);
    EXPECT_EQ(ferry->shelf(), "charts/\"old\"/");
    EXPECT_EQ(Vessel::shelf(), "charts/\"old\"/");
}

TEST(GeneratedEntity, IsReportedToTheTrackerByItsRunTimeType) {
    std::string const ferrySize = std::to_string(sizeof(Ferry)) + " ";
    Watcher const watcher;
    Vex::Ptr<Vessel> vessel = ferryFactory("Silja", nullptr, "Turku", 1);
    EXPECT_EQ(watcher.events(), "+Test::Fleet::Ferry:" + ferrySize);
    EXPECT_EQ(Ferry::vexAllocTrackTypeInfo_.liveCount(), 1U);
    EXPECT_EQ(Ferry::vexAllocTrackTypeInfo_.liveBytes(), sizeof(Ferry));
    EXPECT_EQ(Vessel::vexAllocTrackTypeInfo_.liveCount(), 0U);
    EXPECT_EQ(Ferry::vexAllocTrackTypeInfo_.type(), typeid(Ferry));
    vessel = nullptr;
    EXPECT_EQ(watcher.events(),
              "+Test::Fleet::Ferry:" + ferrySize + "-Test::Fleet::Ferry:" + ferrySize);
}

TEST(GeneratedEntity, FreesTheWholeTreeBelowIt) {
    U64 const before = liveObjects();
    auto const chart = Vex::makePtr<Sea::Chart>(4U);
    auto harbour = harbourFactory();
    harbour->logIs();
    harbour->holdIs("bow")->crateIs("c1", 1, Sea::Depth(1), "Anna");
    harbour->crateIs("c2", 1, Sea::Depth(1), "Anna");
    harbour->chartIs("north", chart);
    harbour->captainIs(Vex::makePtr<Captain>("Anna", chart));
    EXPECT_EQ(liveObjects(), before + 6);
    EXPECT_EQ(chart->references(), 3U);
    harbour = nullptr;
    EXPECT_EQ(liveObjects(), before);
    EXPECT_EQ(chart->references(), 1U);
}

TEST(GeneratedEntity, HasPlainAttributes) {
    auto const harbour = harbourFactory();
    EXPECT_EQ(harbour->master(), "");
    harbour->masterIs("Eve");
    EXPECT_EQ(harbour->master(), "Eve");
    auto const ferry = ferryFactory("Silja", nullptr, "", 0);
    Voyage voyage(Vex::Name("v"));
    voyage.stopsIs("Riga", true);
    ferry->voyageIs(voyage);
    EXPECT_EQ(ferry->voyage(), voyage);
}

} // namespace Test::Fleet
