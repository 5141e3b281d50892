#include "modelc/emit/Layout.h"
#include "modelc/emit/Operation.h"
#include "modelc/emit/Spelling.h"
#include "modelc/source/Quoted.h"

#include <algorithm>

namespace modelc {

namespace {

/// A name for a local variable that no parameter has.
std::string freeName(std::string name, Type const & element) {
    while (std::any_of(element.constructor.begin(), element.constructor.end(),
                       [&](Attribute const * argument) { return argument->name == name; })) {
        name += "Here";
    }
    return name;
}

/// The operations of one collection.
class Collection {
public:
    Collection(Type const & owner, Attribute const & attribute)
        : owner_(owner), attribute_(attribute), type_(attribute.type.name),
          member_(attribute.name + "_"), slot_("Vex" + spelling::capitalized(attribute.name)),
          iterator_(spelling::capitalized(attribute.name) + "Iterator"),
          key_(spelling::lookupParameter(attribute.key) + " key") {}

    std::vector<Operation> operations() const {
        std::vector<Operation> all{getter()};
        add(all, lookups());
        all.push_back(operation("Whether there is an entry with that key.", "bool", "Has", {key_},
                                "const", {"return " + member_ + ".has(key);"}));
        all.push_back(insertion());
        add(all, removals());
        all.push_back(operation("Removes every entry.", "void", "DelAll", {}, mutating(),
                                {member_ + ".clear();"}));
        return all;
    }

private:
    static void add(std::vector<Operation> & all, std::vector<Operation> more) {
        std::move(more.begin(), more.end(), std::back_inserter(all));
    }

    std::string mutating() const { return owner_.entity ? "" : "&"; }

    Operation operation(std::string comment, std::string result, std::string const & suffix,
                        std::vector<std::string> parameters, std::string qualifiers,
                        std::vector<std::string> body) const {
        return {.comment = std::move(comment),
                .result = std::move(result),
                .name = attribute_.name + suffix,
                .parameters = std::move(parameters),
                .qualifiers = std::move(qualifiers),
                .body = std::move(body)};
    }

    Operation getter() const {
        std::string const order = attribute_.kind == AttributeKind::hashedSetCollection
                                      ? "The collection; iteration is in hash order."
                                      : "The collection; iteration is in key order.";
        auto result =
            operation(order, spelling::capitalized(attribute_.name) + "Collection const &", "", {},
                      "const noexcept", {"return " + member_ + ";"});
        result.inHeader = true;
        return result;
    }

    std::vector<Operation> lookups() const {
        std::string const find = "auto const * found = " + member_ + ".find(key);";
        switch (attribute_.kind) {
        case AttributeKind::valueCollection:
            return {operation("The value with that key; the default value if there is none.", type_,
                              "", {key_}, "const",
                              {find, "return found ? found->element() : " + type_ + "();"})};
        case AttributeKind::ownedEntityCollection:
            return {operation("The entity with that key, or null.", "Vex::Ptr<" + type_ + " const>",
                              "", {key_}, "const",
                              {find, "return found ? found->element() : nullptr;"}),
                    operation("The same, mutable.", "Vex::Ptr<" + type_ + ">", "", {key_}, "",
                              {find, "return found ? found->element() : nullptr;"})};
        case AttributeKind::sharedEntityCollection:
            return {operation("The entity shared under that key, or null.",
                              "Vex::Ptr<" + type_ + " const>", "", {key_}, "const",
                              {find, "return found ? found->element() : nullptr;"})};
        default:
            return {operation("The flag stored with the key; false if there is no entry.", "bool",
                              "", {key_}, "const", {find, "return found && found->element();"})};
        }
    }

    Operation insertion() const {
        switch (attribute_.kind) {
        case AttributeKind::valueCollection:
            return operation("Inserts the value; replaces one with the same key.", "void", "Is",
                             {type_ + " value"}, mutating(),
                             {member_ + ".upsert(" + slot_ + "(std::move(value)));"});
        case AttributeKind::ownedEntityCollection:
            return findOrCreate();
        case AttributeKind::sharedEntityCollection:
            return share();
        default:
            return operation("Inserts the key with a flag, or overwrites its flag.", "void", "Is",
                             {spelling::storedParameter(attribute_.key) + " key", "bool member"},
                             mutating(),
                             {member_ + ".upsert(" + slot_ + "(" +
                              spelling::storedValue(attribute_.key, "key") + ", member));"});
        }
    }

    /// An existing element must have been created with the same arguments.
    Operation findOrCreate() const {
        Type const & element = *attribute_.type.declared;
        std::vector<std::string> names;
        std::vector<std::string> parameters;
        for (auto const * argument : element.constructor) {
            names.push_back(argument->name);
            parameters.push_back(spelling::lookupParameter(argument->type) + " " + argument->name);
        }
        std::string const create = slot_ + "(" + spelling::creationCall(element, names) + ")";
        std::string const make = freeName("make", element);
        std::string const find =
            member_ + ".findOrInsert(" + names.front() + ", " + make + ").element()";
        if (names.size() == 1) {
            auto body = lambda(make, create);
            body.push_back("return " + find + ";");
            return operation("Finds the entity with that key, or creates it.",
                             "Vex::Ptr<" + type_ + ">", "Is", parameters, "", std::move(body));
        }
        std::string const created = freeName("created", element);
        std::string const found = freeName("found", element);
        std::vector<std::string> body{"bool " + created + " = false;",
                                      "auto const " + make + " = [&] {",
                                      "    " + created + " = true;",
                                      "    return " + create + ";",
                                      "};",
                                      "auto const & " + found + " = " + find + ";",
                                      "if (" + created + ") {",
                                      "    return " + found + ";",
                                      "}"};
        for (std::size_t i = 1; i < names.size(); ++i) {
            std::string const stored = found + "->" + names[i] + "()";
            body.push_back("if (!(" + stored + " == " + names[i] + ")) {");
            body.push_back("    throwReinstantiating<" + type_ + ">(" + names.front() + ", " +
                           quotedForCpp(names[i]) + ", " + names[i] + ", " + stored + ");");
            body.push_back("}");
        }
        body.push_back("return " + found + ";");
        return operation("Finds or creates the entity; throws ReinstantiationError if its other "
                         "arguments differ.",
                         "Vex::Ptr<" + type_ + ">", "Is", parameters, "", std::move(body));
    }

    /// A lambda that returns the expression, on one line if it fits.
    static std::vector<std::string> lambda(std::string const & name, std::string const & result) {
        std::string const line = "auto const " + name + " = [&] { return " + result + "; };";
        if (4 + line.size() <= lineWidth) {
            return {line};
        }
        return {"auto const " + name + " = [&] {", "    return " + result + ";", "};"};
    }

    /// The pointer comes by value: the caller's can be an element of this collection, which the
    /// insertion moves.
    Operation share() const {
        std::string const pointer = "Vex::Ptr<" + type_ + " const>";
        bool const byAttribute = !attribute_.keyAttribute.empty();
        std::vector<std::string> parameters{pointer + " entity"};
        std::vector<std::string> body;
        if (byAttribute) {
            body = {"if (!entity) {", "    return nullptr;", "}",
                    spelling::lookupParameter(attribute_.key) + " key = entity->" +
                        attribute_.keyAttribute + "();"};
        } else {
            parameters.insert(parameters.begin(), key_);
            body = {"if (!entity) {", "    " + member_ + ".remove(key);", "    return nullptr;",
                    "}"};
        }
        for (auto & line : lambda("make", slot_ + "(key, entity)")) {
            body.push_back(std::move(line));
        }
        body.push_back("auto & stored = " + member_ + ".findOrInsert(key, make).element();");
        body.push_back("stored = std::move(entity);");
        body.push_back("return stored;");
        return operation(byAttribute ? "Shares the entity under its " + attribute_.keyAttribute +
                                           ", replacing any other; null does nothing."
                                     : "Shares the entity under the key, replacing any other; "
                                       "null removes the entry.",
                         pointer, "Is", std::move(parameters), "", std::move(body));
    }

    std::vector<Operation> removals() const {
        std::string result = "bool";
        std::string taken = "removed && removed->element()";
        std::string what = "its flag, or false if there was none.";
        if (attribute_.kind == AttributeKind::valueCollection) {
            result = type_;
            taken = "removed ? std::move(removed->element()) : " + type_ + "()";
            what = "its value, or the default value if there was none.";
        } else if (attribute_.kind == AttributeKind::ownedEntityCollection) {
            result = "Vex::Ptr<" + type_ + ">";
            taken = "removed ? std::move(removed->element()) : nullptr";
            what = "its entity, or null.";
        } else if (attribute_.kind == AttributeKind::sharedEntityCollection) {
            result = "Vex::Ptr<" + type_ + " const>";
            taken = "removed ? std::move(removed->element()) : nullptr";
            what = "its entity, or null.";
        }
        auto const body = [&](std::string const & argument) -> std::vector<std::string> {
            return {"auto removed = " + member_ + ".remove(" + argument + ");",
                    "return " + taken + ";"};
        };
        std::vector<Operation> all{operation("Removes the entry with that key; returns " + what,
                                             result, "Del", {key_}, mutating(), body("key"))};
        if (attribute_.kind != AttributeKind::hashedSetCollection) {
            all.push_back(operation("Removes the entry at the iterator; otherwise the same.",
                                    result, "Del", {iterator_ + " & position"}, mutating(),
                                    body("position")));
        }
        return all;
    }

    Type const & owner_;
    Attribute const & attribute_;
    std::string type_;
    std::string member_;
    std::string slot_;
    std::string iterator_;
    std::string key_;
};

} // namespace

std::vector<Operation> collectionOperations(Type const & owner, Attribute const & attribute) {
    return Collection(owner, attribute).operations();
}

} // namespace modelc
