#include "modelc/check/Order.h"

#include <algorithm>
#include <set>

namespace modelc {

namespace {

bool needsComplete(Attribute const & attribute) {
    switch (attribute.kind) {
    case AttributeKind::constructorArgument:
    case AttributeKind::plain:
    case AttributeKind::valueCollection:
    case AttributeKind::ownedEntityCollection:
        return attribute.type.declared != nullptr;
    default:
        return false;
    }
}

class Sorter {
public:
    explicit Sorter(Problems & problems) : problems_(problems) {}

    void visit(Type const & type) {
        if (!entered_.insert(&type).second) {
            return;
        }
        open_.push_back(&type);
        if (type.base) {
            visit(*type.base);
        }
        for (auto const & attribute : type.attributes) {
            if (needsComplete(attribute)) {
                follow(attribute);
            }
        }
        open_.pop_back();
        order_.push_back(&type);
    }

    std::vector<Type const *> take() { return std::move(order_); }

private:
    void follow(Attribute const & attribute) {
        Type const * needed = attribute.type.declared;
        auto const start = std::find(open_.begin(), open_.end(), needed);
        if (start == open_.end()) {
            visit(*needed);
            return;
        }
        std::string path;
        for (auto at = start; at != open_.end(); ++at) {
            path += (*at)->name + " > ";
        }
        problems_.add(attribute.at,
                      "'" + needed->name + "' would contain itself: " + path + needed->name);
    }

    Problems & problems_;
    std::set<Type const *> entered_;
    std::vector<Type const *> open_;
    std::vector<Type const *> order_;
};

} // namespace

std::vector<Type const *> definitionOrder(Model const & model, Problems & problems) {
    Sorter sorter(problems);
    for (auto const & type : model.types) {
        sorter.visit(type);
    }
    return sorter.take();
}

} // namespace modelc
