#include "Vex/TypeImpl.h"

#include "Vex/HashMap.h"
#include "Vex/OrderedMap.h"
#include "Vex/Slot.h"
#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

/// These types are written by hand as the model compiler would generate them.
namespace Test {

namespace {

using Vex::AnyValue;
using Vex::AttributeKind;
using Vex::Ptr;
using Vex::String;
using Vex::U32;

class Coin {
public:
    static Vex::Type const _vexType;

    Coin() = default;

    explicit Coin(U32 worth) : worth_(worth) {}

    Coin(String::IteratorConst & it, String::IteratorConst const & end)
        : worth_(Vex::deserializeAttr<U32>(it, end)) {
        Vex::needString(it, end, " cents");
    }

    U32 worth() const noexcept { return worth_; }

    using MintCollection = Vex::OrderedMap<Vex::SetSlot<String>>;

    MintCollection const & mint() const noexcept { return mint_; }

    void mintIs(String key, bool member) & { mint_.upsert({std::move(key), member}); }

    bool mintDel(String const & key) & { return mint_.remove(key).has_value(); }

    void mintDelAll() & { mint_.clear(); }

    bool operator==(Coin const &) const = default;

    friend String valueToStrep(Coin const & coin) { return std::to_string(coin.worth_) + " cents"; }

private:
    U32 worth_ = 0;
    MintCollection mint_;
};

class Purse : public Vex::PtrInterface {
public:
    static Vex::Type const _vexType;

    explicit Purse(String owner) : owner_(std::move(owner)) {}

    Vex::Type const & fwkType() const noexcept override { return _vexType; }

    String const & owner() const noexcept { return owner_; }

    Ptr<Purse const> inner() const { return inner_; }

    Ptr<Purse> inner() { return inner_; }

    Ptr<Purse> innerIs() { return inner_ = inner_ ? inner_ : Vex::makePtr<Purse>("inner"); }

    void innerDel() { inner_ = nullptr; }

    Ptr<Counted const> const & lent() const noexcept { return lent_; }

    void lentIs(Ptr<Counted const> const & lent) { lent_ = lent; }

    using CoinCollection = Vex::OrderedMap<Vex::ValueSlot<U32, Coin, &Coin::worth>>;

    CoinCollection const & coin() const noexcept { return coin_; }

    Coin coin(U32 worth) const { return coin_.find(worth)->element(); }

    void coinIs(Coin coin) { coin_.upsert(CoinCollection::Slot(std::move(coin))); }

    Coin coinDel(U32 worth) { return coin_.remove(worth)->element(); }

    Coin coinDel(CoinCollection::Iterator & at) { return coin_.remove(at)->element(); }

    void coinDelAll() { coin_.clear(); }

private:
    String const owner_;
    Ptr<Purse> inner_;
    Ptr<Counted const> lent_;
    CoinCollection coin_;
};

constexpr Vex::Attribute attributesOfCoin[] = {
    {"worth", 2, AttributeKind::constructorArgument, "U32", "", ""},
    {"mint", 3, AttributeKind::setCollection, "bool", "Vex::String", ""},
};
constexpr std::string_view argumentsOfCoin[] = {"worth"};

constexpr Vex::Attribute attributesOfPurse[] = {
    {"owner", 130, AttributeKind::constructorArgument, "Vex::String", "", ""},
    {"inner", 131, AttributeKind::ownedEntity, "Purse", "", ""},
    {"lent", 132, AttributeKind::entityPointerPlain, "Counted", "", ""},
    {"coin", 133, AttributeKind::valueCollection, "Coin", "U32", ""},
    {"spend", 140, AttributeKind::method, "()", "", ""},
};
constexpr std::string_view argumentsOfPurse[] = {"owner"};

constexpr Vex::TypeImpl implOfCoin{
    Vex::Constructor<Coin, U32>(), Vex::Readable(2, &Coin::worth),
    Vex::Collection(
        3, &Coin::mint, &Coin::mintIs,
        [](auto & object, auto & key) { return object.mintDel(key); }, &Coin::mintDelAll)};

constexpr Vex::TypeImpl implOfPurse{
    Vex::Constructor<Purse, String>(), Vex::Readable(130, &Purse::owner),
    Vex::OwnedEntity(131, &Purse::inner, &Purse::innerIs, &Purse::innerDel),
    Vex::Plain(132, &Purse::lent, &Purse::lentIs),
    Vex::Collection(
        133, &Purse::coin, &Purse::coinIs,
        [](auto & object, auto & key) { return object.coinDel(key); }, &Purse::coinDelAll)};

constinit Vex::Type const Coin::_vexType{"Test::Coin",     Vex::Type::Kind::value, nullptr,
                                         attributesOfCoin, argumentsOfCoin,        "",
                                         &implOfCoin};
constinit Vex::Type const Purse::_vexType{"Test::Purse",     Vex::Type::Kind::entity, nullptr,
                                          attributesOfPurse, argumentsOfPurse,        "",
                                          &implOfPurse};

Vex::TypeOperations const & coins = implOfCoin;
Vex::TypeOperations const & purses = implOfPurse;

AnyValue purse(String owner) {
    return purses.construct({std::move(owner)});
}

std::string errorOf(auto action) {
    try {
        action();
    } catch (Vex::OperandError const & error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(TypeImpl, ConstructsActiveEntitiesAndValues) {
    AnyValue const made = purse("Anna");
    EXPECT_EQ(made.typeName(), "Vex::Ptr<Test::(anonymous namespace)::Purse>");
    EXPECT_TRUE(made.as<Ptr<Purse>>()->hasNotificationActive());
    EXPECT_EQ(made.reflection()->operations, &purses);
    EXPECT_EQ(purses.get(made, 130), AnyValue(String("Anna")));
    AnyValue const coin = coins.construct({U32{5}});
    EXPECT_EQ(coin, AnyValue(Coin(5)));
    EXPECT_EQ(coin.reflection()->operations, &coins);
}

TEST(TypeImpl, ChangesAValueInPlace) {
    AnyValue coin = Coin(5);
    AnyValue const before = coin;
    coins.insert(coin, 3, {String("Bern"), true});
    coins.insert(coin, 3, {String("Arles"), false});
    EXPECT_EQ(coins.count(coin, 3), 2U);
    EXPECT_EQ(coins.count(before, 3), 0U);
    EXPECT_EQ(coins.lookup(coin, 3, String("Bern")), AnyValue(true));
    EXPECT_EQ(coins.lookup(coin, 3, String("Arles")), AnyValue(false));
    EXPECT_TRUE(coins.lookup(coin, 3, String("Rome")).empty());
    EXPECT_NE(coin, before);
}

TEST(TypeImpl, WalksOverAValueAsItIsNow) {
    AnyValue coin = Coin(5);
    coins.insert(coin, 3, {String("Bern"), true});
    auto at = coins.iterate(coin, 3);
    coins.clear(coin, 3);
    coin = AnyValue();
    ASSERT_TRUE(at);
    EXPECT_EQ(at.key(), AnyValue(String("Bern")));
    EXPECT_EQ(at.element(), AnyValue(true));
    EXPECT_FALSE(++at);
}

TEST(TypeImpl, AWalkKeepsItsEntityAndFollowsChanges) {
    AnyValue object = purse("Anna");
    for (U32 const worth : {U32{20}, U32{1}, U32{5}}) {
        purses.insert(object, 133, {Coin(worth)});
    }
    auto at = purses.iterate(object, 133);
    EXPECT_EQ(at.key(), AnyValue(U32{1}));
    purses.remove(object, 133, {U32{1}});
    purses.remove(object, 133, {U32{5}});
    object = AnyValue();
    EXPECT_EQ(at.element(), AnyValue(Coin(1)));
    ASSERT_TRUE(++at);
    EXPECT_EQ(at.key(), AnyValue(U32{20}));
    EXPECT_FALSE(++at);
}

TEST(TypeImpl, AnEntityOwnedByAConstantEntityIsConstant) {
    AnyValue object = purse("Anna");
    EXPECT_TRUE(purses.get(object, 131).isNull());
    AnyValue const inner = purses.insert(object, 131, {});
    EXPECT_EQ(purses.get(object, 131), inner);
    EXPECT_FALSE(purses.get(object, 131).isConstantEntity());
    AnyValue constant{Ptr<Purse const>(object.as<Ptr<Purse>>())};
    EXPECT_EQ(purses.get(constant, 131), inner);
    EXPECT_TRUE(purses.get(constant, 131).isConstantEntity());
    EXPECT_EQ(errorOf([&] { purses.clear(constant, 133); }),
              "Test::Purse.coin: clear: object: expected Vex::Ptr<Test::(anonymous "
              "namespace)::Purse>, found Vex::Ptr<Test::(anonymous namespace)::Purse const>");
    purses.remove(object, 131, {});
    EXPECT_TRUE(purses.get(object, 131).isNull());
}

TEST(TypeImpl, HasTheStringFormOfTheType) {
    EXPECT_EQ(coins.stringForm(Coin(5)), "5 cents");
    EXPECT_EQ(coins.fromStringForm("5 cents"), AnyValue(Coin(5)));
    EXPECT_THROW(coins.fromStringForm("5 cents more"), Vex::ParseError);
    EXPECT_EQ(errorOf([] { coins.stringForm(U32{5}); }),
              "Test::Coin: string form: expected Test::(anonymous namespace)::Coin, found U32");
    EXPECT_EQ(errorOf([] { purses.stringForm(purse("Anna")); }),
              "Test::Purse: the type has no string form");
    EXPECT_EQ(errorOf([] { purses.fromStringForm("x"); }),
              "Test::Purse: the type is not read from a string form");
}

TEST(TypeOperations, RefuseAnUnknownNumber) {
    AnyValue object = purse("Anna");
    EXPECT_EQ(errorOf([&] { purses.get(object, 199); }),
              "Test::Purse: get: no attribute has the number 199: expected 130 to 133, 140");
    EXPECT_EQ(errorOf([&] { coins.clear(object, 130); }),
              "Test::Coin: clear: no attribute has the number 130: expected 2 to 3");
}

TEST(TypeOperations, RefuseOperationsThatTheKindDoesNotHave) {
    AnyValue object = purse("Anna");
    EXPECT_EQ(errorOf([&] { purses.set(object, 130, String("Bert")); }),
              "Test::Purse.owner: set is no operation of this kind of attribute (constructor "
              "argument): it has get");
    EXPECT_EQ(errorOf([&] { purses.get(object, 133); }),
              "Test::Purse.coin: get is no operation of this kind of attribute (value "
              "collection): it has insert, remove, clear, lookup, count, iterate");
    EXPECT_EQ(errorOf([&] { purses.count(object, 131); }),
              "Test::Purse.inner: count is no operation of this kind of attribute (owned "
              "entity): it has get, insert, remove");
    EXPECT_EQ(errorOf([&] { purses.get(object, 140); }),
              "Test::Purse.spend: get is no operation of this kind of attribute (method): it is "
              "only listed");
}

TEST(TypeOperations, RefuseArgumentsThatDoNotFitAndChangeNothing) {
    AnyValue object = purse("Anna");
    AnyValue coin = Coin(5);
    EXPECT_EQ(errorOf([] { purses.construct({}); }),
              "Test::Purse: construct: expected 1 argument (Vex::String), found 0");
    EXPECT_EQ(errorOf([] { purses.construct({U32{1}}); }),
              "Test::Purse: construct: argument 1: expected Vex::String, found U32");
    EXPECT_EQ(errorOf([&] { coins.insert(coin, 3, {String("Bern")}); }),
              "Test::Coin.mint: insert: expected 2 arguments (Vex::String, bool), found 1");
    EXPECT_EQ(errorOf([&] {
                  coins.insert(coin, 3, {String("Bern"), U32{1}});
              }),
              "Test::Coin.mint: insert: argument 2: expected bool, found U32");
    EXPECT_EQ(errorOf([&] { coins.remove(coin, 3, {}); }),
              "Test::Coin.mint: remove: expected 1 argument (Vex::String), found 0");
    EXPECT_EQ(errorOf([&] { coins.remove(coin, 3, {U32{1}}); }),
              "Test::Coin.mint: remove: key: expected Vex::String, found U32");
    EXPECT_EQ(errorOf([&] { coins.lookup(coin, 3, true); }),
              "Test::Coin.mint: lookup: key: expected Vex::String, found bool");
    EXPECT_EQ(errorOf([&] { purses.set(object, 132, U32{1}); }),
              "Test::Purse.lent: set: expected Vex::Ptr<Counted const>, found U32");
    EXPECT_EQ(errorOf([&] { purses.insert(object, 131, {true}); }),
              "Test::Purse.inner: insert: expected no arguments, found 1");
    EXPECT_EQ(errorOf([&] { purses.remove(object, 131, {true}); }),
              "Test::Purse.inner: remove: expected no arguments, found 1");
    EXPECT_EQ(coins.count(coin, 3), 0U);
}

TEST(TypeOperations, RefuseAnObjectOfAnotherType) {
    AnyValue coin = Coin(5);
    AnyValue null = nullptr;
    EXPECT_EQ(errorOf([&] { purses.get(coin, 130); }),
              "Test::Purse.owner: get: object: expected Vex::Ptr<Test::(anonymous "
              "namespace)::Purse const>, found Test::(anonymous namespace)::Coin");
    EXPECT_EQ(errorOf([&] { purses.clear(null, 133); }),
              "Test::Purse.coin: clear: object: expected an object, found a null pointer");
}

TEST(TypeOperations, AMethodHasNone) {
    for (int kind = 0; kind <= static_cast<int>(AttributeKind::method); ++kind) {
        bool any = false;
        for (int operation = 0; operation <= static_cast<int>(Vex::Operation::iterate);
             ++operation) {
            any |= Vex::hasOperation(static_cast<AttributeKind>(kind),
                                     static_cast<Vex::Operation>(operation));
        }
        EXPECT_EQ(any, static_cast<AttributeKind>(kind) != AttributeKind::method);
    }
}

} // namespace Test
