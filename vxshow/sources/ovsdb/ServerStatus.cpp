#include "vxshow/sources/ovsdb/ServerStatus.h"

#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/ovsdb/Values.h"
#include "vxshow/text/JsonMembers.h"
#include "vxshow/text/JsonRefusal.h"

#include <array>

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

ServerStatus readRow(text::JsonValue & value) {
    static constexpr std::array<text::MemberName, 5> names{"cid", "connected", "index", "leader",
                                                           "model"};
    auto const * const start = value.at();
    ServerStatus status;
    text::Members members(names);
    value.members("a row", [&](text::JsonText const & name, text::JsonValue & cell) {
        switch (members.take(name)) {
        case 0:
            readReferences(cell, [&](Reference const & cluster) { status.cluster = cluster.row; });
            break;
        case 1:
            status.connected = cell.boolean();
            break;
        case 2:
            status.index = readOptionalInteger(cell);
            break;
        case 3:
            status.leader = cell.boolean();
            break;
        default:
            status.model = readModel(cell);
        }
    });
    for (std::size_t index = 0; index < names.size(); ++index) {
        members.require(index, start);
    }
    return status;
}

std::optional<ServerStatus> readRows(text::JsonValue & value) {
    static constexpr std::array<text::MemberName, 1> names{"rows"};
    std::optional<ServerStatus> status;
    auto const * const start = value.at();
    text::Members members(names);
    value.members("an object with rows", [&](text::JsonText const & name, text::JsonValue & rows) {
        members.take(name);
        rows.elements("a list of rows", [&](text::JsonValue & row) {
            if (status) {
                row.refuse("at most one row");
            }
            status = readRow(row);
        });
    });
    members.require(0, start);
    return status;
}

std::optional<ServerStatus> readAnswers(system::FileBytes const & answer) {
    std::optional<ServerStatus> status;
    std::size_t count = 0;
    text::JsonReader json(answer);
    auto const * const start = json.at();
    json.documentElements(oneAnswer, [&](text::JsonValue & element) {
        if (count++ > 0) {
            element.refuse(std::string(oneAnswer));
        }
        status = readRows(element);
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
