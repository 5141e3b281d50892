#include "vxshow/sources/ovsdb/Database.h"

#include "vxshow/sources/ovsdb/Tables.h"
#include "vxshow/text/JsonRefusal.h"

#include <tuple>

namespace vxshow::sources::ovsdb {

namespace {

std::string answersWanted(std::size_t count) {
    return "an array of " + std::to_string(count) + (count == 1 ? " answer" : " answers");
}

/// Reads all answers. `table` points to the one that is being read; else it is null.
void readAnswers(system::FileBytes const & answer, Request const & request, Table const *& table,
                 Join & join) {
    auto const & tables = request.tables();
    std::size_t at = 0;
    auto const wanted = answersWanted(tables.size());
    join.bytes(answer.text().size());
    text::JsonReader json(answer);
    join.bytes(answer.text().size());
    auto const * const start = json.at();
    json.documentElements(wanted, [&](text::JsonValue & element) {
        if (at == tables.size()) {
            element.refuse(wanted);
        }
        table = &tables[at++];
        readSelect(element, *table, join);
        table = nullptr;
    });
    if (at < tables.size()) {
        throw text::Refusal{start, wanted, " of fewer"};
    }
}

void join(system::FileBytes const & answer, Request const & request, Join & join) {
    Table const * table = nullptr;
    auto const about = [&] {
        return table ? "answer for " + std::string(nameOf(*table)) + ": " : "answer: ";
    };
    auto const step = [&] { join.step(); };
    try {
        readAnswers(answer, request, table, join);
    } catch (SelectRefused const & refused) {
        auto const line = about() + "the server says " + refused.words;
        if (refused.schema) {
            throw RequestRefused(line);
        }
        throw AnswerError(line);
    } catch (text::Refusal const & refusal) {
        throw AnswerError(about() +
                          text::refusalLine(refusal, answer.text(), text::JsonRoot::array, step));
    } catch (text::MalformedJson const & malformed) {
        throw AnswerError("answer: " +
                          text::refusalLine(malformed, answer.text(), text::JsonRoot::array, step));
    }
}

void setSystemIds(DatabaseSource const & source, Facts & facts) {
    for (auto & [name, known] : facts.switches) {
        auto const own = source.systemIds.find(name);
        if (own != source.systemIds.end()) {
            known.systemId = own->second;
        } else if (facts.switches.size() == 1) {
            known.systemId = source.systemId;
        }
    }
}

} // namespace

Answer readDatabase(system::FileBytes const & answer, Request const & request,
                    DatabaseSource const & source, std::optional<Vxlan::Vni> vni,
                    Deadline const & deadline) {
    Join rows(source.name, deadline, source.maxFacts);
    join(answer, request, rows);
    Answer result;
    result.fits = !request.pushed() || (vni && rows.logicalSwitchesOf(*vni) == *request.pushed());
    std::tie(result.facts, result.findings) = rows.finished();
    setSystemIds(source, result.facts);
    return result;
}

std::set<Uuid> logicalSwitchesOf(Vxlan::Vni vni, system::FileBytes const & surveyed,
                                 Deadline const & deadline) {
    Join rows("", deadline);
    join(surveyed, Request::survey(), rows);
    return rows.logicalSwitchesOf(vni);
}

} // namespace vxshow::sources::ovsdb
