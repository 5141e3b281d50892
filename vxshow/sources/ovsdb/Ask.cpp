#include "vxshow/sources/ovsdb/Ask.h"

#include "Vex/Errors.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/ovsdb/ServerChoice.h"

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vxshow::sources::ovsdb {

namespace {

/// The client does not report which file it cannot read.
void checkFile(char const * what, std::string const & path) {
    if (::access(path.c_str(), R_OK) == 0) {
        return;
    }
    int const error = errno;
    throw Failure((error == EACCES ? "permission: " : "unreachable: ") + std::string(what) + " " +
                  Vex::printable(path) + ": " + std::generic_category().message(error));
}

void checkFiles(DatabaseAddress const & address) {
    if (address.ssl) {
        checkFile("private key", address.ssl->privateKey);
        checkFile("certificate", address.ssl->certificate);
        checkFile("CA certificate", address.ssl->caCertificate);
    }
}

/// One reading of a database.
struct Question {
    DatabaseSource const & source;
    Wanted const & wanted;
    std::optional<Vxlan::Vni> vni;
    Deadline const & deadline;
};

Answer askOnce(Client const & server, Question const & question, DatabaseSchema const & schema) {
    auto wanted = question.wanted;
    if (question.vni && (wanted.localMacs || wanted.remoteMacs)) {
        auto const survey = server.query(Request::survey().text(), question.deadline);
        wanted.logicalSwitches = logicalSwitchesOf(*question.vni, survey, question.deadline);
    }
    auto const request = Request::of(wanted, schema);
    auto const answer = server.query(request.text(), question.deadline);
    return readDatabase(answer, request, question.source, question.vni, question.deadline);
}

/// The failure of a server with such a schema, which refuses even what every version should know.
Failure noSuchSchema(RequestRefused const & refused, DatabaseSchema const & schema) {
    return Failure(std::string("no such schema: ") + refused.what() +
                   (schema.version.empty() ? "" : "; its version is " + schema.version));
}

/// The schema of a server that has refused a request. Throws `Failure` with the server's words if
/// it is not an older one, and the reason if the server cannot be asked for it.
DatabaseSchema olderSchema(Client const & server, RequestRefused const & refused,
                           Deadline const & deadline) {
    DatabaseSchema schema;
    try {
        schema = readSchema(server.schema(deadline));
    } catch (AnswerError const &) {
        // The server's words about the request say more.
    }
    if (schema.isWhole()) {
        throw noSuchSchema(refused, schema);
    }
    return schema;
}

/// As `askOnce`. A server that does not know a table or a column is asked again without what its
/// schema lacks.
Answer askInItsSchema(Client const & server, Question const & question) {
    try {
        return askOnce(server, question, {});
    } catch (RequestRefused const & refused) {
        auto const schema = olderSchema(server, refused, question.deadline);
        try {
            auto answer = askOnce(server, question, schema);
            auto const remarks = schema.remarks();
            answer.findings.remarks.insert(answer.findings.remarks.end(), remarks.begin(),
                                           remarks.end());
            return answer;
        } catch (RequestRefused const & again) {
            throw noSuchSchema(again, schema);
        }
    }
}

/// Asks one server. It takes two transactions to name the logical switches of a VNI; if those
/// change in between, the server is asked again.
Answer ask(Client const & server, Question const & question) {
    try {
        for (;;) {
            auto answer = askInItsSchema(server, question);
            if (answer.fits) {
                return answer;
            }
            if (question.deadline.isOver()) {
                throw Failure("time limit: the logical switches of VNI " +
                              std::string(question.vni->stringValue()) + " keep changing");
            }
        }
    } catch (AnswerError const & error) {
        throw Failure(std::string("broken answer: ") + error.what());
    }
}

/// What a server reports to be cut off from; nullopt if it is not cut off, or does not report it:
/// servers before 2.9 cannot.
std::optional<std::string> cutOffFrom(Client const & server, Deadline const & deadline) {
    constexpr std::chrono::milliseconds most{1000};
    try {
        auto const status = readServerStatus(server.query(statusRequest(), deadline.within(most)));
        if (!status || status->connected) {
            return std::nullopt;
        }
        return status->model == ServerStatus::Model::relay ? "the server it relays"
                                                           : "the other servers of its cluster";
    } catch (Failure const &) {
        return std::nullopt;
    } catch (AnswerError const &) {
        return std::nullopt;
    }
}

/// The server is asked for its status after it was read: then it was in contact until the end.
Answer askOnlyOne(DatabaseAddress const & address, Question const & question) {
    Client const server(address.remotes.front(), address.ssl);
    auto answer = ask(server, question);
    if (auto const others = cutOffFrom(server, question.deadline)) {
        throw Failure("unreachable: " + Vex::printable(address.remotes.front()) +
                      " is cut off from " + *others);
    }
    return answer;
}

Answer askCluster(DatabaseAddress const & address, Question const & question) {
    constexpr std::chrono::milliseconds betweenServers{100};
    ServerChoice servers(address);
    for (;;) {
        auto const & server = servers.server(question.deadline);
        try {
            return ask(server, question);
        } catch (ServerFailure const &) {
            std::this_thread::sleep_until(question.deadline.within(betweenServers).end);
            if (question.deadline.isOver()) {
                throw;
            }
        }
    }
}

} // namespace

Answer askDatabase(DatabaseAddress const & address, DatabaseSource const & source,
                   Wanted const & wanted, std::optional<Vxlan::Vni> vni,
                   Deadline const & deadline) {
    checkFiles(address);
    Question const question{source, wanted, vni, deadline};
    return address.remotes.size() == 1 ? askOnlyOne(address, question)
                                       : askCluster(address, question);
}

} // namespace vxshow::sources::ovsdb
