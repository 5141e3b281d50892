#include "vxshow/sources/ovsdb/ServerStatus.h"

#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/ovsdb/Values.h"
#include "vxshow/text/JsonFields.h"
#include "vxshow/text/JsonRefusal.h"

namespace vxshow::sources::ovsdb {

namespace {

constexpr std::string_view oneAnswer = "an array of 1 answer";

ServerStatus::Model readModel(text::JsonValue & value) {
    using Model = ServerStatus::Model;
    constexpr std::string_view expected = R"("standalone", "clustered" or "relay")";
    auto const name = value.text(expected);
    if (name.text() == "standalone") {
        return Model::standalone;
    }
    if (name.text() == "clustered") {
        return Model::clustered;
    }
    if (name.text() != "relay") {
        name.refuse(std::string(expected));
    }
    return Model::relay;
}

constexpr auto statusRow = text::strictObject(
    "a row",
    text::requiredMember("cid",
                         [](text::JsonValue & cell, ServerStatus & into) {
                             readReferences(cell, [&](Reference const & cluster) {
                                 into.cluster = cluster.row;
                             });
                         }),
    text::requiredMember("connected", [](text::JsonValue & cell,
                                         ServerStatus & into) { into.connected = cell.boolean(); }),
    text::requiredMember("index",
                         [](text::JsonValue & cell, ServerStatus & into) {
                             into.index = readOptionalInteger(cell);
                         }),
    text::requiredMember("leader", [](text::JsonValue & cell,
                                      ServerStatus & into) { into.leader = cell.boolean(); }),
    text::requiredMember("model", [](text::JsonValue & cell, ServerStatus & into) {
        into.model = readModel(cell);
    }));

constexpr auto statusRows = text::strictObject(
    "an object with rows",
    text::requiredMember("rows", [](text::JsonValue & rows, std::optional<ServerStatus> & into) {
        rows.elements("a list of rows", [&](text::JsonValue & row) {
            if (into) {
                row.refuse("at most one row");
            }
            statusRow.read(row, into.emplace());
        });
    }));

std::optional<ServerStatus> readAnswers(system::FileBytes const & answer) {
    std::optional<ServerStatus> status;
    std::size_t count = 0;
    text::JsonReader json(answer);
    auto const * const start = json.at();
    json.documentElements(oneAnswer, [&](text::JsonValue & element) {
        if (count++ > 0) {
            element.refuse(std::string(oneAnswer));
        }
        statusRows.read(element, status);
    });
    if (count == 0) {
        throw text::Refusal{start, std::string(oneAnswer), " of fewer"};
    }
    return status;
}

bool isReady(std::optional<ServerStatus> const & server) {
    return server && server->connected;
}

} // namespace

std::string const & statusRequest() {
    static std::string const request =
        R"(["_Server",{"op":"select","table":"Database","where":[["name","==","hardware_vtep"]],)"
        R"("columns":["cid","connected","index","leader","model"]}])";
    return request;
}

std::optional<ServerStatus> readServerStatus(system::FileBytes const & answer) {
    constexpr char const * about = "the server's own status: ";
    try {
        return readAnswers(answer);
    } catch (text::Refusal const & refusal) {
        throw AnswerError(about + text::refusalLine(refusal, answer.text(), text::JsonRoot::array));
    } catch (text::MalformedJson const & malformed) {
        throw AnswerError(about +
                          text::refusalLine(malformed, answer.text(), text::JsonRoot::array));
    }
}

bool areOfOneDatabase(ServerStatus const & one, ServerStatus const & other) {
    if (one.cluster || other.cluster) {
        return one.cluster == other.cluster;
    }
    constexpr auto relay = ServerStatus::Model::relay;
    return one.model == relay && other.model == relay;
}

std::optional<std::size_t> leaderOf(Servers const & servers) {
    std::optional<std::size_t> leader;
    for (std::size_t index = 0; index < servers.size(); ++index) {
        auto const & server = servers[index];
        if (isReady(server) && server->cluster && server->leader &&
            (!leader || server->index > servers[*leader]->index)) {
            leader = index;
        }
    }
    return leader;
}

std::optional<std::size_t> serverToRead(Servers const & servers) {
    auto const leader = leaderOf(servers);
    for (std::size_t index = 0; index < servers.size(); ++index) {
        auto const & server = servers[index];
        if (!isReady(server)) {
            continue;
        }
        if (!server->cluster) {
            return index;
        }
        if (leader && !server->leader && server->index >= servers[*leader]->index) {
            return index;
        }
    }
    return std::nullopt;
}

} // namespace vxshow::sources::ovsdb
