#include "modelc/emit/Spelling.h"

#include "modelc/emit/Layout.h"

namespace modelc::spelled {

namespace {

bool isByValue(TypeRef const & type) {
    return type.kind == TypeClass::boolean || type.kind == TypeClass::number ||
           type.kind == TypeClass::scalar;
}

} // namespace

std::string held(TypeRef const & type) {
    return type.kind == TypeClass::entity ? "Vex::Ptr<" + type.name + " const>" : type.name;
}

std::string got(TypeRef const & type) {
    return looked(type);
}

std::string looked(TypeRef const & type) {
    return isByValue(type) ? type.name : held(type) + " const &";
}

std::string kept(TypeRef const & type) {
    return type.kind == TypeClass::text ? type.name : looked(type);
}

std::string given(TypeRef const & type) {
    return type.kind == TypeClass::entity ? looked(type) : type.name;
}

std::string movedIn(TypeRef const & type, std::string const & name) {
    return type.kind == TypeClass::text ? "std::move(" + name + ")" : name;
}

std::string capital(std::string const & name) {
    std::string changed = name;
    if (changed[0] >= 'a' && changed[0] <= 'z') {
        changed[0] = static_cast<char>(changed[0] - 'a' + 'A');
    }
    return changed;
}

std::string factory(Type const & type) {
    std::string changed = type.name;
    changed[0] = static_cast<char>(changed[0] - 'A' + 'a');
    return changed + "Factory";
}

std::string creation(Type const & type, std::vector<std::string> const & arguments) {
    std::string const maker =
        type.creator ? type.name + "::" + type.name + "Is" : "newActive<" + type.name + ">";
    return maker + "(" + joined(arguments, ", ") + ")";
}

} // namespace modelc::spelled
