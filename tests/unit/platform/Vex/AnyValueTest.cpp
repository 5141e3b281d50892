#include "Vex/AnyValue.h"

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Vex/Name.h"
#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

namespace {

using Vex::AnyValue;
using Vex::Ptr;
using Vex::U32;
using Vex::U8;

struct Silent {
    bool operator==(Silent const &) const = default;
};

template <class T>
std::string errorOf(AnyValue const & value, std::string_view what = {}) {
    try {
        static_cast<void>(value.as<T>(what));
    } catch (Vex::OperandError const & error) {
        return error.what();
    }
    return "no error";
}

auto const mac = Nolt::EthAddr::fromString("02:00:00:00:00:01");

static_assert(!std::is_constructible_v<AnyValue, int>);
static_assert(!std::is_constructible_v<AnyValue, char const *>);
static_assert(!std::is_constructible_v<AnyValue, int *>);
static_assert(std::is_constructible_v<AnyValue, bool>);

} // namespace

TEST(AnyValue, ReturnsWhatItHolds) {
    EXPECT_EQ(AnyValue(mac).as<Nolt::EthAddr>(), mac);
    EXPECT_EQ(AnyValue(U8{7}).as<U8>(), 7);
    EXPECT_TRUE(AnyValue(true).as<bool>());
    EXPECT_EQ(AnyValue(Vex::String("a")).as<Vex::String>(), "a");
    auto const counted = Vex::makePtr<Counted>(5);
    EXPECT_EQ(AnyValue(counted).as<Ptr<Counted>>(), counted);
}

TEST(AnyValue, KnowsTheTypeThatItHolds) {
    EXPECT_EQ(AnyValue(mac).typeName(), "Nolt::EthAddr");
    EXPECT_EQ(AnyValue(U8{7}).typeName(), "U8");
    EXPECT_EQ(AnyValue(Vex::U16{7}).typeName(), "U16");
    EXPECT_EQ(AnyValue(U32{7}).typeName(), "U32");
    EXPECT_EQ(AnyValue(Vex::U64{7}).typeName(), "U64");
    EXPECT_EQ(AnyValue(false).typeName(), "bool");
    EXPECT_EQ(AnyValue(Vex::String()).typeName(), "Vex::String");
    EXPECT_EQ(AnyValue(Ptr<Counted const>()).typeName(), "Vex::Ptr<Counted const>");
    EXPECT_EQ(AnyValue().typeName(), "nothing");
    EXPECT_TRUE(AnyValue().empty());
    EXPECT_FALSE(AnyValue(false).empty());
}

TEST(AnyValue, RefusesAnotherTypeAndNamesBoth) {
    EXPECT_EQ(errorOf<U8>(AnyValue(U32{7})), "expected U8, found U32");
    EXPECT_EQ(errorOf<Nolt::EthAddr>(AnyValue(Nolt::IpAddr(1)), "key"),
              "key: expected Nolt::EthAddr, found Nolt::IpAddr");
    EXPECT_EQ(errorOf<Vex::Name>(AnyValue(Vex::String("a"))),
              "expected Vex::Name, found Vex::String");
    EXPECT_EQ(errorOf<bool>(AnyValue()), "expected bool, found nothing");
    EXPECT_EQ(errorOf<Ptr<Counted>>(AnyValue(mac)),
              "expected Vex::Ptr<Counted>, found Nolt::EthAddr");
    EXPECT_EQ(errorOf<bool>(AnyValue(nullptr)), "expected bool, found Vex::Ptr<Vex::PtrInterface>");
}

TEST(AnyValue, ConvertsPointersToABaseOrAConstantAndBackDown) {
    auto const counted = Vex::makePtr<Counted>(5);
    AnyValue const box(counted);
    EXPECT_EQ(box.as<Ptr<Counted const>>(), counted);
    EXPECT_EQ(box.as<Ptr<Vex::Entity>>(), counted);
    AnyValue const base{Ptr<Vex::PtrInterface>(counted)};
    EXPECT_EQ(base.as<Ptr<Counted>>(), counted);
    AnyValue const constant{Ptr<Counted const>(counted)};
    EXPECT_TRUE(constant.isConstantEntity());
    EXPECT_EQ(constant.as<Ptr<Counted const>>(), counted);
    EXPECT_EQ(errorOf<Ptr<Counted>>(constant),
              "expected Vex::Ptr<Counted>, found Vex::Ptr<Counted const>");
}

TEST(AnyValue, ANullPointerConvertsToEveryEntityPointer) {
    EXPECT_EQ(AnyValue(nullptr).as<Ptr<Counted>>(), nullptr);
    EXPECT_EQ(AnyValue(nullptr).as<Ptr<Vex::Entity const>>(), nullptr);
    EXPECT_TRUE(AnyValue(nullptr).isNull());
    EXPECT_TRUE(AnyValue(Ptr<Counted const>()).isNull());
    EXPECT_FALSE(AnyValue(Vex::makePtr<Counted>(1)).isNull());
    EXPECT_FALSE(AnyValue().isNull());
    EXPECT_FALSE(AnyValue(false).isNull());
}

TEST(AnyValue, IsEqualOnlyToTheSameValueOfTheSameType) {
    EXPECT_EQ(AnyValue(mac), AnyValue(mac));
    EXPECT_NE(AnyValue(mac), AnyValue(Nolt::EthAddr()));
    EXPECT_NE(AnyValue(U8{7}), AnyValue(U32{7}));
    EXPECT_EQ(AnyValue(), AnyValue());
    EXPECT_NE(AnyValue(), AnyValue(false));
    EXPECT_NE(AnyValue(false), AnyValue());
    auto const counted = Vex::makePtr<Counted>(5);
    EXPECT_EQ(AnyValue(counted), AnyValue(Ptr<Counted const>(counted)));
    EXPECT_NE(AnyValue(counted), AnyValue(Vex::makePtr<Counted>(5)));
    EXPECT_NE(AnyValue(counted), AnyValue(mac));
    EXPECT_NE(AnyValue(mac), AnyValue(counted));
    EXPECT_EQ(AnyValue(nullptr), AnyValue(Ptr<Counted>()));
}

TEST(AnyValue, HasTheTextOfItsValue) {
    EXPECT_EQ(AnyValue(mac).text(), "02:00:00:00:00:01");
    EXPECT_EQ(AnyValue(U32{70}).text(), "70");
    EXPECT_EQ(AnyValue(Vex::Name("leaf1")).text(), "leaf1");
    EXPECT_EQ(AnyValue(Silent()).text(), std::nullopt);
    EXPECT_EQ(AnyValue(nullptr).text(), std::nullopt);
    EXPECT_EQ(AnyValue().text(), std::nullopt);
}

TEST(AnyValue, CopiesValuesAndSharesEntities) {
    AnyValue a(Vex::String("one"));
    AnyValue const b = a;
    a.reference<Vex::String>() = "two";
    EXPECT_EQ(a.as<Vex::String>(), "two");
    EXPECT_EQ(b.as<Vex::String>(), "one");
    EXPECT_THROW(a.reference<Vex::Name>(), Vex::OperandError);
    {
        AnyValue const entity(Vex::makePtr<Counted>(1));
        AnyValue const shared = entity;
        EXPECT_EQ(Counted::alive, 1);
        EXPECT_EQ(shared.as<Ptr<Counted>>()->references(), 3U);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(AnyValue, IsEmptyAfterItWasMovedFrom) {
    AnyValue value(mac);
    AnyValue const moved(std::move(value));
    EXPECT_EQ(moved, AnyValue(mac));
    // NOLINTNEXTLINE(bugprone-use-after-move): the state after the move is what is tested.
    EXPECT_TRUE(value.empty());
    EXPECT_EQ(value.typeName(), "nothing");
    EXPECT_EQ(value.text(), std::nullopt);
    EXPECT_EQ(value.reflection(), nullptr);
    EXPECT_FALSE(value.isConstantEntity());
    EXPECT_EQ(value, AnyValue());
    EXPECT_NE(value, moved);
    EXPECT_EQ(errorOf<Nolt::EthAddr>(value), "expected Nolt::EthAddr, found nothing");
}

TEST(AnyValue, IsEmptyAfterItWasMovedFromByAssignment) {
    auto const counted = Vex::makePtr<Counted>(5);
    AnyValue value{Ptr<Counted const>(counted)};
    AnyValue target(U32{7});
    target = std::move(value);
    EXPECT_EQ(target.as<Ptr<Counted const>>(), counted);
    // NOLINTNEXTLINE(bugprone-use-after-move): the state after the move is what is tested.
    EXPECT_TRUE(value.empty());
    EXPECT_FALSE(value.isConstantEntity());
    EXPECT_EQ(value.reflection(), nullptr);
    value = AnyValue(U8{1});
    EXPECT_EQ(value.text(), "1");
}

TEST(AnyValue, HasTheReflectionRecordOfAnEntity) {
    EXPECT_EQ(AnyValue(Vex::makePtr<Counted>(1)).reflection(),
              &Vex::makePtr<Counted>(1)->fwkType());
    EXPECT_EQ(AnyValue(nullptr).reflection(), nullptr);
    EXPECT_EQ(AnyValue(mac).reflection(), nullptr);
    EXPECT_EQ(AnyValue().reflection(), nullptr);
}
