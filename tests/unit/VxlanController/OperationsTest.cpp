#include "Vex/Reinstantiation.h"
#include "Vex/TypeOperations.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "tests/unit/VxlanController/Samples.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

/// Operates every attribute of every model type as a generic tool does: knowing nothing about a
/// type but its record.
namespace {

using Vex::AnyValue;
using Vex::AnyValues;
using Vex::Attribute;
using Vex::AttributeKind;
using Vex::Operation;
using Vex::U32;

/// Collections of shared entities that are keyed by an attribute of the entity.
std::set<std::string_view> const keyedByOwnAttribute{"switchList"};

/// One attribute of one object.
class Subject {
public:
    Subject(Vex::Type const & type, Attribute const & attribute, AnyValue & object)
        : type_(type), attribute_(attribute), object_(object) {}

    AnyValue get() const { return operations().get(object_, number()); }

    void set(AnyValue const & value) { operations().set(object_, number(), value); }

    AnyValue insert(AnyValues const & arguments) {
        return operations().insert(object_, number(), arguments);
    }

    AnyValue remove(AnyValues const & key) { return operations().remove(object_, number(), key); }

    void clear() { operations().clear(object_, number()); }

    AnyValue lookup(AnyValue const & key) const {
        return operations().lookup(object_, number(), key);
    }

    std::size_t count() const { return operations().count(object_, number()); }

    /// The keys in the order of the collection; each entry is looked up as well.
    AnyValues keys() const {
        AnyValues all;
        for (auto at = operations().iterate(object_, number()); at; ++at) {
            EXPECT_EQ(lookup(at.key()), at.element()) << name();
            all.push_back(at.key());
        }
        return all;
    }

    AnyValue valueSample(unsigned which) const { return sample(attribute_.type, which); }

    AnyValue keySample(unsigned which) const { return sample(attribute_.key, which); }

    Attribute const & record() const { return attribute_; }

    Vex::Type const & owner() const { return type_; }

    std::string name() const {
        return std::string(type_.name) + "." + std::string(attribute_.name);
    }

    /// Expects that every operation that this kind of attribute lacks is refused by name.
    void expectRefusals() {
        for (int i = 0; i <= static_cast<int>(Operation::iterate); ++i) {
            auto const operation = static_cast<Operation>(i);
            if (Vex::hasOperation(attribute_.kind, operation)) {
                continue;
            }
            try {
                call(operation);
                ADD_FAILURE() << name() << ": " << Vex::operationText(operation);
            } catch (Vex::OperandError const & error) {
                EXPECT_NE(std::string_view(error.what()).find("is no operation of this kind"),
                          std::string_view::npos)
                    << error.what();
            }
        }
    }

private:
    Vex::TypeOperations const & operations() const { return *type_.operations; }

    U32 number() const { return attribute_.number; }

    void call(Operation operation) {
        switch (operation) {
        case Operation::get:
            get();
            break;
        case Operation::set:
            set({});
            break;
        case Operation::insert:
            insert({});
            break;
        case Operation::remove:
            remove({});
            break;
        case Operation::clear:
            clear();
            break;
        case Operation::lookup:
            lookup({});
            break;
        case Operation::count:
            count();
            break;
        case Operation::iterate:
            keys();
            break;
        }
    }

    Vex::Type const & type_;
    Attribute const & attribute_;
    AnyValue & object_;
};

void exerciseArgument(Subject & subject) {
    auto const & names = subject.owner().constructorArguments;
    EXPECT_NE(std::find(names.begin(), names.end(), subject.record().name), names.end());
    EXPECT_EQ(subject.get(), subject.valueSample(0)) << subject.name();
}

void exercisePlain(Subject & subject) {
    EXPECT_EQ(subject.get(), subject.valueSample(0)) << subject.name();
    auto const other = subject.valueSample(1);
    subject.set(other);
    EXPECT_EQ(subject.get(), other) << subject.name();
    EXPECT_NE(subject.get(), subject.valueSample(0)) << subject.name();
}

void exerciseConstant(Subject & subject) {
    EXPECT_EQ(subject.get(), AnyValue(Vex::String("vxlancontroller/version2/logicalRouter/")));
}

void exerciseOwned(Subject & subject) {
    EXPECT_TRUE(subject.get().isNull()) << subject.name();
    auto const made = subject.insert({});
    ASSERT_FALSE(made.isNull()) << subject.name();
    EXPECT_EQ(made.reflection(), Vex::typeNode(subject.record().type));
    EXPECT_EQ(subject.insert({}), made) << subject.name();
    EXPECT_EQ(subject.get(), made) << subject.name();
    EXPECT_TRUE(subject.remove({}).empty());
    EXPECT_TRUE(subject.get().isNull()) << subject.name();
}

/// Exercises a collection that holds `one` and `two` under keys 1 and 2, inserted in reverse
/// order. Leaves it empty.
void exerciseEntries(Subject & subject, AnyValue const & one, AnyValue const & two) {
    auto const absent = subject.keySample(0);
    auto const first = subject.keySample(1);
    auto const second = subject.keySample(2);
    EXPECT_EQ(subject.count(), 2U) << subject.name();
    EXPECT_EQ(subject.lookup(first), one) << subject.name();
    EXPECT_EQ(subject.lookup(second), two) << subject.name();
    EXPECT_TRUE(subject.lookup(absent).empty()) << subject.name();
    auto const keys = subject.keys();
    ASSERT_EQ(keys.size(), 2U) << subject.name();
    if (subject.record().kind == AttributeKind::hashedSetCollection) {
        EXPECT_TRUE(keys[0] == first || keys[1] == first) << subject.name();
        EXPECT_NE(keys[0], keys[1]) << subject.name();
    } else {
        EXPECT_EQ(keys, (AnyValues{first, second})) << subject.name();
    }
    EXPECT_TRUE(subject.remove({absent}).empty()) << subject.name();
    EXPECT_EQ(subject.count(), 2U) << subject.name();
    EXPECT_EQ(subject.remove({first}), one) << subject.name();
    EXPECT_TRUE(subject.remove({first}).empty()) << subject.name();
    EXPECT_EQ(subject.count(), 1U) << subject.name();
    subject.clear();
    EXPECT_EQ(subject.count(), 0U) << subject.name();
    EXPECT_TRUE(subject.keys().empty()) << subject.name();
}

void exerciseValues(Subject & subject) {
    auto const type = subject.record().type;
    auto const changed = withOtherContent(type, subject.valueSample(1));
    EXPECT_NE(changed, subject.valueSample(1));
    EXPECT_TRUE(subject.insert({subject.valueSample(2)}).empty());
    subject.insert({subject.valueSample(1)});
    EXPECT_EQ(subject.lookup(subject.keySample(1)), subject.valueSample(1)) << subject.name();
    subject.insert({changed});
    exerciseEntries(subject, changed, subject.valueSample(2));
}

void exerciseSet(Subject & subject) {
    EXPECT_TRUE(subject.insert({subject.keySample(2), true}).empty());
    subject.insert({subject.keySample(1), true});
    EXPECT_EQ(subject.lookup(subject.keySample(1)), AnyValue(true)) << subject.name();
    subject.insert({subject.keySample(1), false});
    exerciseEntries(subject, false, true);
}

void exerciseOwnedEntries(Subject & subject) {
    auto const & element = *Vex::typeNode(subject.record().type);
    auto const arguments = sampleArguments(element, 1);
    auto const two = subject.insert(sampleArguments(element, 2));
    auto const one = subject.insert(arguments);
    EXPECT_EQ(one.reflection(), &element);
    EXPECT_EQ(subject.insert(arguments), one) << subject.name();
    EXPECT_EQ(element.operations->get(one, element.attributes.front().number), arguments.front());
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        auto others = arguments;
        others[i] = sampleArguments(element, 2)[i];
        EXPECT_THROW(subject.insert(others), Vex::ReinstantiationError) << subject.name() << i;
    }
    exerciseEntries(subject, one, two);
}

void exerciseSharedEntries(Subject & subject) {
    auto const one = subject.valueSample(1);
    auto const two = subject.valueSample(2);
    auto const other = subject.valueSample(1);
    ASSERT_NE(one, other);
    bool const ownKey = keyedByOwnAttribute.contains(subject.record().name);
    auto const insert = [&](unsigned key, AnyValue const & entity) {
        return ownKey ? subject.insert({entity}) : subject.insert({subject.keySample(key), entity});
    };
    EXPECT_EQ(insert(2, two), two) << subject.name();
    EXPECT_EQ(insert(1, other), other) << subject.name();
    EXPECT_EQ(insert(1, one), one) << subject.name();
    EXPECT_TRUE(insert(2, nullptr).isNull()) << subject.name();
    EXPECT_EQ(subject.count(), ownKey ? 2U : 1U) << subject.name();
    insert(2, two);
    exerciseEntries(subject, one, two);
}

void exercise(Subject & subject) {
    switch (subject.record().kind) {
    case AttributeKind::constructorArgument:
    case AttributeKind::entityPointer:
        return exerciseArgument(subject);
    case AttributeKind::plain:
    case AttributeKind::entityPointerPlain:
        return exercisePlain(subject);
    case AttributeKind::constant:
        return exerciseConstant(subject);
    case AttributeKind::ownedEntity:
        return exerciseOwned(subject);
    case AttributeKind::valueCollection:
        return exerciseValues(subject);
    case AttributeKind::setCollection:
    case AttributeKind::hashedSetCollection:
        return exerciseSet(subject);
    case AttributeKind::ownedEntityCollection:
        return exerciseOwnedEntries(subject);
    case AttributeKind::sharedEntityCollection:
        return exerciseSharedEntries(subject);
    case AttributeKind::method:
        return; // methods are only listed and have no operations
    }
    ADD_FAILURE() << subject.name() << ": a kind that this test does not know";
}

} // namespace

TEST(Operations, WorkOnEveryAttributeOfEveryType) {
    std::map<AttributeKind, int> seen;
    std::size_t types = 0;
    for (auto const * type : Vex::typeTable()) {
        ASSERT_NE(type->operations, nullptr) << type->name;
        AnyValue object = type->operations->construct(sampleArguments(*type, 0));
        EXPECT_EQ(object.reflection(), type);
        for (auto const * at = type; at; at = at->base) {
            for (auto const & attribute : at->attributes) {
                Subject subject(*type, attribute, object);
                exercise(subject);
                subject.expectRefusals();
                ++seen[attribute.kind];
            }
        }
        ++types;
    }
    EXPECT_EQ(types, 30U);
    std::map<AttributeKind, int> const expected{
        {AttributeKind::constructorArgument, 42},
        {AttributeKind::plain, 6},
        {AttributeKind::constant, 3},
        {AttributeKind::entityPointer, 19},
        {AttributeKind::entityPointerPlain, 2},
        {AttributeKind::ownedEntity, 4},
        {AttributeKind::valueCollection, 4},
        {AttributeKind::setCollection, 4},
        {AttributeKind::hashedSetCollection, 1},
        {AttributeKind::ownedEntityCollection, 16},
        {AttributeKind::sharedEntityCollection, 3},
        {AttributeKind::method, 18},
    };
    EXPECT_EQ(seen, expected);
}

TEST(Operations, EachConstructorArgumentSetsItsOwnAttribute) {
    for (auto const * type : Vex::typeTable()) {
        AnyValues arguments;
        for (std::size_t i = 0; i < type->constructorArguments.size(); ++i) {
            arguments.push_back(sampleArguments(*type, 1 + i % 2)[i]);
        }
        AnyValue const object = type->operations->construct(arguments);
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            auto const name = type->constructorArguments[i];
            EXPECT_EQ(type->operations->get(object, type->attribute(name)->number), arguments[i])
                << type->name << "." << name;
        }
    }
}

TEST(Operations, OfADerivedTypeAcceptOnlyItsOwnObjects) {
    auto const base = Vex::typeNode("VxlanController::Cli::LRMapBase");
    auto const & detail = *Vex::typeNode("VxlanController::Cli::VcsLR")->operations;
    AnyValue const map = Vex::typeNode("VxlanController::Cli::VcsLRMap")
                             ->operations->construct(sampleArguments(
                                 *Vex::typeNode("VxlanController::Cli::VcsLRMap"), 0));
    EXPECT_EQ(base->operations->count(map, 133), 0U);
    try {
        detail.count(map, 133);
        FAIL() << "nothing was thrown";
    } catch (Vex::OperandError const & error) {
        EXPECT_STREQ(error.what(), "VxlanController::Cli::VcsLR.switchMap: count: object: expected "
                                   "VxlanController::Cli::VcsLR or what is derived from it, found "
                                   "VxlanController::Cli::VcsLRMap");
    }
}

TEST(Operations, ElementsAreTheObjectsThatTheLibraryItselfSees) {
    auto const list = VxlanController::Cli::VniStatusList::VniStatusListIs();
    AnyValue object(list);
    auto const & operations = *list->fwkType().operations;
    auto const entry = operations.insert(object, 130, {Vxlan::Vni(10)});
    EXPECT_EQ(entry, AnyValue(list->vniEntry(Vxlan::Vni(10))));
    EXPECT_TRUE(list->vniEntry(Vxlan::Vni(10))->hasNotificationActive());
}

TEST(Operations, AWrongElementIsRefusedWithTheNamesOfBothTypes) {
    AnyValue list(VxlanController::Cli::vniStatusDirListFactory());
    try {
        list.reflection()->operations->insert(list, 130, {Vex::Name("HSC"), list});
        FAIL() << "nothing was thrown";
    } catch (Vex::OperandError const & error) {
        EXPECT_STREQ(error.what(),
                     "VxlanController::Cli::VniStatusDirList.vniStatusDir: insert: argument 2: "
                     "expected Vex::Ptr<VxlanController::VniStatusDirV2 const>, found "
                     "Vex::Ptr<VxlanController::Cli::VniStatusDirList>");
    }
}
