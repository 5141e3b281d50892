#include "vxshow/sources/fabric/FabricFile.h"

#include "Vex/Errors.h"
#include "vxshow/sources/SystemId.h"
#include "vxshow/sources/fabric/SourceTable.h"
#include "vxshow/state/SourceNames.h"
#include "vxshow/system/FileBytes.h"

#include <map>
#include <new>
#include <set>
#include <system_error>
#include <unistd.h>

namespace vxshow::sources::fabric {

namespace {

constexpr std::size_t mostSources = 4096;

/// With a slash at its end. The current folder is written out, too: see `ovsdb::kind`.
std::string folderOf(std::string const & path) {
    auto const slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

text::TomlField sourcesOf(text::TomlField const & root) {
    for (text::TomlMember const & member : root.table("a table")) {
        if (member.name != "source" && member.name != maxFactsKey && member.name != timeLimitKey) {
            root.refuseKey(member, "", "\"time_limit\", \"max_facts\" or \"source\"");
        }
    }
    return root.required("source");
}

/// The system identifiers of the fabric's switches. Two switches with the same one would pass for
/// one in the map of routers.
class SystemIds {
public:
    /// Adds those of the source `source`, which is called `name`. Throws `TomlRefusal` for one that
    /// another switch has.
    void add(text::TomlField const & source, std::string const & name) {
        if (auto const field = source.find("system_id")) {
            addOne(*field, "source " + name);
        }
        if (auto const field = source.find("system_ids")) {
            for (text::TomlMember const & member : field->table("a table")) {
                addOne(field->at(member), "switch " + std::string(member.name));
            }
        }
    }

private:
    void addOne(text::TomlField const & field, std::string const & owner) {
        auto const place = owners_.emplace(readSystemId(field), owner).first;
        if (place->second != owner) {
            field.refuse("a system identifier that no other switch has");
        }
    }

    /// What has each. Several databases can have one switch, which they call by the same name.
    std::map<Nolt::EthAddr, std::string> owners_;
};

/// The remark on a switch whose name `--source` takes for something else.
std::string wordAsName(std::string const & name) {
    return "--source " + name + " is " + (name == "all" ? "every switch" : "another source") +
           "; --source name:" + name + " is this one";
}

/// `file` is its name in messages.
Fabric readDocument(text::TomlValue const & document, std::string const & folder,
                    std::string const & file, std::size_t maxFacts) {
    text::TomlField const root(document);
    auto const list = sourcesOf(root);
    maxFacts = readMaxFacts(root).value_or(maxFacts);
    std::string const expected = "1 to " + std::to_string(mostSources) + " tables [[source]]";
    auto const elements = list.elements(expected);
    if (elements.empty()) {
        list.refuse(expected);
    }
    if (elements.size() > mostSources) {
        list.refuse("an array of " + std::to_string(elements.size()), expected);
    }
    Fabric fabric;
    if (auto const field = root.find(timeLimitKey)) {
        fabric.timeLimit = readTimeLimit(*field);
    }
    auto & sources = fabric.sources;
    std::set<std::string> names;
    SystemIds systemIds;
    for (text::TomlField const & element : elements) {
        sources.push_back(readSourceTable(element, folder, maxFacts));
        auto & source = sources.back();
        if (!names.insert(source.name).second) {
            element.required("name").refuse("a name that no source before it has");
        }
        if (source.role == Role::switches && state::isSourceWord(source.name)) {
            fabric.remarks.push_back(file + ":" + element.required("name").where() + ": " +
                                     wordAsName(source.name));
        }
        systemIds.add(element, source.name);
    }
    return fabric;
}

} // namespace

Fabric readFabricFile(std::string const & path, std::size_t maxFacts) {
    bool const standardInput = path == "-";
    std::string const name = standardInput ? "standard input" : Vex::printable(path);
    try {
        auto const bytes =
            standardInput ? system::FileBytes::read(STDIN_FILENO) : system::FileBytes::open(path);
        return readDocument(text::readToml(bytes.text()), folderOf(path), name, maxFacts);
    } catch (text::TomlRefusal const & refusal) {
        throw FabricFileError(name + ":" + refusal.what());
    } catch (std::system_error const & error) {
        throw FabricFileError(name + ": " + error.code().message());
    } catch (std::length_error const & error) {
        throw FabricFileError(name + ": " + error.what());
    } catch (std::bad_alloc const &) {
        throw FabricFileError(name + ": not enough memory for it");
    }
}

} // namespace vxshow::sources::fabric
