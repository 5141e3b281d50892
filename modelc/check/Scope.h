#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace modelc {

/// The type names that a model can use: built-in, imported and its own.
class Scope {
public:
    /// Adds the imports and the declared types of `file`. `types` has one entry per declared
    /// type, in the same order, and must outlive the scope.
    Scope(tree::File const & file, std::deque<Type> const & types, Problems & problems);

    /// The type with that name, or null.
    TypeRef const * find(std::string const & name) const noexcept;

    /// The type with that name. If there is none, adds a problem and returns nullopt.
    std::optional<TypeRef> type(tree::Name const & name);

    /// The model's own type with that name. If there is none, adds a problem, which starts
    /// with `what` ("the base", for example), and returns null.
    Type const * declared(tree::Name const & name, std::string const & what);

    /// The headers of the imports, each once, sorted.
    std::vector<std::string> headers() const { return {headers_.begin(), headers_.end()}; }

private:
    void importType(tree::Import const & import);
    bool add(tree::Name const & name, TypeRef type);

    Problems & problems_;
    std::map<std::string, TypeRef> types_;
    std::map<std::string, Location> locations_;
    std::set<std::string> headers_;
};

} // namespace modelc
