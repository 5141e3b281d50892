#include "modelc/check/Scope.h"

#include "modelc/check/Words.h"
#include "modelc/source/Spelling.h"

#include <utility>

namespace modelc {

namespace {

std::optional<TypeClass> importedClass(std::string_view word) {
    if (word == "entity") {
        return TypeClass::entity;
    }
    if (word == "value") {
        return TypeClass::value;
    }
    if (word == "scalar") {
        return TypeClass::scalar;
    }
    if (word == "text") {
        return TypeClass::text;
    }
    return std::nullopt;
}

} // namespace

Scope::Scope(tree::File const & file, std::deque<Type> const & types, Problems & problems)
    : problems_(problems) {
    types_["bool"] = {.name = "bool", .kind = TypeClass::boolean};
    for (auto const * number : {"U8", "U16", "U32", "U64"}) {
        types_[number] = {.name = number, .kind = TypeClass::number};
    }
    for (auto const & import : file.imports) {
        importType(import);
    }
    for (std::size_t i = 0; i < types.size(); ++i) {
        tree::Name const & name = file.types[i].name;
        if (!startsUpper(name.text)) {
            problems_.add(name.at,
                          "the type name '" + name.text + "' must start with an upper-case letter");
        }
        add(name, {.name = name.text,
                   .kind = types[i].entity ? TypeClass::entity : TypeClass::value,
                   .declared = &types[i]});
    }
    // Key types are looked up last, when every type name is known.
    for (auto const & import : file.imports) {
        if (import.keyAttribute) {
            type(import.keyType);
        }
    }
}

void Scope::importType(tree::Import const & import) {
    auto const kind = importedClass(import.kind.text);
    if (!kind) {
        problems_.add(import.kind.at,
                      "unknown kind of import '" + import.kind.text + "'" +
                          didYouMean(import.kind.text, {"entity", "value", "scalar", "text"}));
        return;
    }
    if (import.header.empty()) {
        problems_.add(import.type.at, "the header of '" + import.type.text + "' is empty");
    }
    TypeRef type{.name = import.type.text, .kind = *kind};
    if (import.keyAttribute) {
        type.importedKey = import.keyAttribute->text;
        type.importedKeyType = import.keyType.text;
        if (*kind != TypeClass::value) {
            problems_.add(import.keyAttribute->at,
                          "'" + import.type.text + "' is not a value, so it cannot have a key");
        }
    }
    if (add(import.type, std::move(type))) {
        headers_.insert(import.header);
    }
}

bool Scope::add(tree::Name const & name, TypeRef type) {
    if (auto const before = locations_.find(name.text); before != locations_.end()) {
        problems_.add(name.at, "'" + name.text + "' is already declared on line " +
                                   std::to_string(before->second.line));
        return false;
    }
    if (types_.contains(name.text)) {
        problems_.add(name.at, "'" + name.text + "' is a built-in type");
        return false;
    }
    locations_[name.text] = name.at;
    types_[name.text] = std::move(type);
    return true;
}

TypeRef const * Scope::find(std::string const & name) const noexcept {
    auto const found = types_.find(name);
    return found == types_.end() ? nullptr : &found->second;
}

std::optional<TypeRef> Scope::type(tree::Name const & name) {
    if (TypeRef const * found = find(name.text)) {
        return *found;
    }
    std::vector<std::string> known;
    for (auto const & entry : types_) {
        known.push_back(entry.first);
    }
    auto const hint = didYouMean(name.text, known);
    problems_.add(name.at, "unknown type '" + name.text + "'" +
                               (hint.empty() ? "; declare it or import it" : hint));
    return std::nullopt;
}

Type const * Scope::declared(tree::Name const & name, std::string const & what) {
    auto const found = types_.find(name.text);
    if (found != types_.end() && found->second.declared) {
        return found->second.declared;
    }
    std::vector<std::string> known;
    for (auto const & entry : types_) {
        if (entry.second.declared) {
            known.push_back(entry.first);
        }
    }
    problems_.add(name.at, what + " '" + name.text + "' is not a type of this model" +
                               didYouMean(name.text, known));
    return nullptr;
}

} // namespace modelc
