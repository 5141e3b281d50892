#include "vxshow/cli/command/ObjectWalk.h"

#include "Nolt/IpAddr.h"
#include "VxlanController/command/FixedOrder.h"
#include "vxshow/cli/command/ModelAttributes.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vxshow::cli::command {

namespace {

/// The number that orders the entries of a hashed set.
Vex::U64 fixedNumberOf(Vex::AnyValue const & key) {
    using VxlanController::Cli::fixedNumber;
    try {
        return fixedNumber(key.as<Nolt::IpAddr>());
    } catch (Vex::OperandError const &) {
        return fixedNumber(std::string_view(key.text().value_or("")));
    }
}

class Walk {
public:
    explicit Walk(ObjectVisitor & visitor) : visitor_(visitor) {}

    void run(Vex::AnyValue const & root) {
        visit({}, root);
        while (!open_.empty()) {
            step();
        }
    }

private:
    /// An object whose attributes are being visited.
    struct Open {
        Vex::AnyValue object;
        Vex::Type const * type;
        Attributes const * attributes;
        std::size_t next = 0;                         ///< the attribute to visit
        std::optional<Vex::AnyIterator> entries = {}; ///< of the attribute at `next`
    };

    void step() {
        Open & top = open_.back();
        if (top.next == top.attributes->size()) {
            visitor_.endObject();
            open_.pop_back();
            return;
        }
        auto const & attribute = *(*top.attributes)[top.next];
        if (top.entries) {
            stepEntry(top, attribute);
        } else if (attribute.kind == Vex::AttributeKind::hashedSetCollection) {
            ++top.next;
            visitHashedSet(top, attribute);
        } else if (Vex::hasOperation(attribute.kind, Vex::Operation::iterate)) {
            visitor_.beginCollection(attribute,
                                     top.type->operations->count(top.object, attribute.number));
            top.entries = top.type->operations->iterate(top.object, attribute.number);
        } else {
            ++top.next;
            if (Vex::hasOperation(attribute.kind, Vex::Operation::get)) {
                visit({&attribute}, top.type->operations->get(top.object, attribute.number));
            }
        }
    }

    /// The walk over a hashed set has another order in each process. Its elements are values.
    void visitHashedSet(Open const & owner, Vex::Attribute const & attribute) {
        struct Entry {
            Vex::U64 number;
            Vex::AnyValue key;
            Vex::AnyValue element;
        };

        auto const & operations = *owner.type->operations;
        visitor_.beginCollection(attribute, operations.count(owner.object, attribute.number));
        std::vector<Entry> entries;
        for (auto at = operations.iterate(owner.object, attribute.number); at; ++at) {
            entries.push_back({fixedNumberOf(at.key()), at.key(), at.element()});
        }
        std::sort(entries.begin(), entries.end(), [](Entry const & a, Entry const & b) {
            return a.number != b.number ? a.number < b.number : a.key.text() < b.key.text();
        });
        for (Entry const & entry : entries) {
            visitor_.value({&attribute, &entry.key}, entry.element);
        }
        visitor_.endCollection();
    }

    void stepEntry(Open & top, Vex::Attribute const & attribute) {
        auto & entries = *top.entries;
        if (!entries) {
            visitor_.endCollection();
            top.entries.reset();
            ++top.next;
            return;
        }
        auto const key = entries.key();
        auto const element = entries.element();
        ++entries;
        visit({&attribute, &key}, element);
    }

    /// Can open another object, which moves the others in memory.
    void visit(Place const & place, Vex::AnyValue const & value) {
        Vex::Type const * const type = value.reflection();
        if (!type || !type->operations) {
            visitor_.value(place, value);
            return;
        }
        std::size_t number = 0;
        if (type->kind == Vex::Type::Kind::entity) {
            auto const entity = value.as<Vex::Ptr<Vex::PtrInterface const>>();
            auto const [known, isNew] = numbers_.try_emplace(entity.ptr(), numbers_.size() + 1);
            number = known->second;
            if (!isNew) {
                visitor_.reference(place, *type, number);
                return;
            }
        }
        visitor_.beginObject(place, *type, number);
        open_.push_back({value, type, &attributesOf(*type)});
    }

    Attributes const & attributesOf(Vex::Type const & type) {
        auto const [known, isNew] = attributes_.try_emplace(&type);
        if (isNew) {
            known->second = allAttributes(type);
        }
        return known->second;
    }

    ObjectVisitor & visitor_;
    std::vector<Open> open_;
    std::unordered_map<Vex::PtrInterface const *, std::size_t> numbers_;
    std::unordered_map<Vex::Type const *, Attributes> attributes_;
};

} // namespace

void walkObjects(Vex::AnyValues const & roots, ObjectVisitor & visitor) {
    Walk walk(visitor);
    for (Vex::AnyValue const & root : roots) {
        walk.run(root);
    }
}

} // namespace vxshow::cli::command
