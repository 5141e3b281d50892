#pragma once

#include "modelc/model/Model.h"
#include "modelc/source/Problem.h"
#include "modelc/syntax/Tree.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace modelc {

/// The type names that a model may use: the built-in ones, the imported ones, its own.
class Scope {
public:
    /// Takes in the imports and the declared types of `file`; `types` holds one entry for
    /// each of the latter, in the same order, and must outlive the scope.
    Scope(tree::File const & file, std::deque<Type> const & types, Problems & problems);

    /// The type of that name; when there is none, a problem is added and nothing returned.
    std::optional<TypeRef> type(tree::Name const & name);

    /// The same for the model's own types alone. `what` says what they are wanted for.
    Type const * declared(tree::Name const & name, std::string const & what);

    /// The headers of the imports, each once, sorted.
    std::vector<std::string> headers() const { return {headers_.begin(), headers_.end()}; }

private:
    void importType(tree::Import const & import);
    bool add(tree::Name const & name, TypeRef type);

    Problems & problems_;
    std::map<std::string, TypeRef> types_;
    std::map<std::string, Location> places_;
    std::set<std::string> headers_;
};

} // namespace modelc
