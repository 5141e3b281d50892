#include "vxshow/cli/command/ObjectWalk.h"

#include "vxshow/cli/command/ModelAttributes.h"

#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vxshow::cli::command {

namespace {

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
