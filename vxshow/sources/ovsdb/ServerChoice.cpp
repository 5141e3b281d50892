#include "vxshow/sources/ovsdb/ServerChoice.h"

#include "Vex/Errors.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/system/Reason.h"
#include "vxshow/system/Run.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <string_view>
#include <system_error>
#include <thread>

namespace vxshow::sources::ovsdb {

namespace {

using std::chrono::milliseconds;

/// A server that hangs must not use up the time of those that answer.
constexpr milliseconds mostBesideOthers{200};

/// An election takes 0.8 to 1.7 s with the timer that servers come with.
constexpr milliseconds betweenQuestions{100};

/// A follower that is behind when it is asked has caught up a moment later.
constexpr milliseconds catchingUp{5};
constexpr int mostCatchingUp = 3;

void pause(milliseconds time, Deadline const & deadline) {
    std::this_thread::sleep_until(deadline.within(time).end);
}

/// How long an answer is useful: reading a server takes at least as long as asking its status.
milliseconds timeToAnswer(Deadline const & deadline) {
    auto const left =
        std::chrono::duration_cast<milliseconds>(deadline.end - Deadline::Clock::now());
    return std::max(left / 2, mostBesideOthers);
}

/// The reason `failure` with the name of its server, after the kind of failure.
std::string namedReason(std::string_view remote, std::string_view failure) {
    std::string name(Vex::printable(remote));
    if (failure.find(name) != std::string_view::npos) {
        return std::string(failure);
    }
    name += ": ";
    constexpr std::string_view kindEnd = ": ";
    auto const end = failure.find(kindEnd);
    auto const kind = end == std::string_view::npos ? 0 : end + kindEnd.size();
    return std::string(failure).insert(kind, name);
}

/// The first few reasons, on one line.
std::string joined(std::vector<std::string> const & reasons) {
    constexpr std::size_t most = 3;
    std::string line;
    for (std::size_t index = 0; index < std::min(reasons.size(), most); ++index) {
        line += (index == 0 ? "" : "; ") + reasons[index];
    }
    return reasons.size() > most ? line + "; and " + std::to_string(reasons.size() - most) + " more"
                                 : line;
}

} // namespace

ServerChoice::ServerChoice(DatabaseAddress const & address) : statuses_(address.remotes.size()) {
    for (std::string const & remote : address.remotes) {
        servers_.push_back({Client(remote, address.ssl)});
    }
}

void ServerChoice::askOne(std::size_t index, Deadline const & deadline) {
    auto & server = servers_[index];
    auto const time = std::min(server.patience, timeToAnswer(deadline));
    auto const most = deadline.within(time);
    std::optional<ServerStatus> status;
    std::string failure;
    bool hung = false;
    try {
        status = readServerStatus(server.client.query(statusRequest(), most));
        failure = status ? "" : "no such schema: the server has no database hardware_vtep";
    } catch (Failure const & refused) {
        failure = refused.what();
        hung = most.isOver();
    } catch (std::exception const & error) {
        failure = "broken answer: " + std::string(Vex::printable(error.what()));
    }
    // If it was cut off only because little time is left, that says nothing of the server.
    bool const shortened = time < server.patience || deadline.isOver();
    if (hung && shortened && server.asked) {
        return;
    }
    statuses_[index] = status;
    server.failure = std::move(failure);
    server.hung = hung;
    server.asked = true;
}

void ServerChoice::growPatience() {
    bool const none = noneAnswers();
    for (auto & server : servers_) {
        if (!server.hung) {
            server.patience = Server::patienceAtFirst;
        } else if (!none && server.patience == Server::patienceAtFirst) {
            server.patience = mostBesideOthers;
        } else {
            server.patience *= 2;
        }
    }
}

void ServerChoice::ask(std::vector<std::size_t> const & which, Deadline const & deadline) {
    std::vector<std::jthread> threads;
    threads.reserve(which.size());
    for (std::size_t const index : which) {
        try {
            threads.emplace_back([this, index, &deadline] { askOne(index, deadline); });
        } catch (std::system_error const &) {
            askOne(index, deadline);
        }
    }
}

std::vector<std::size_t> ServerChoice::all() const {
    std::vector<std::size_t> which;
    for (std::size_t index = 0; index < servers_.size(); ++index) {
        which.push_back(index);
    }
    return which;
}

std::vector<std::size_t> ServerChoice::followers() const {
    std::vector<std::size_t> which;
    for (std::size_t index = 0; index < statuses_.size(); ++index) {
        if (statuses_[index] && statuses_[index]->connected && !statuses_[index]->leader) {
            which.push_back(index);
        }
    }
    return which;
}

bool ServerChoice::noneAnswers() const {
    return std::none_of(statuses_.begin(), statuses_.end(),
                        [](auto const & status) { return status.has_value(); });
}

void ServerChoice::requireAnswers(Deadline const & deadline) const {
    bool const hung = std::any_of(servers_.begin(), servers_.end(),
                                  [](Server const & server) { return server.hung; });
    if (noneAnswers() && !hung) {
        throw Failure(whyNoneAnswers(deadline));
    }
}

std::string ServerChoice::whyNoneAnswers(Deadline const & deadline) const {
    auto const hangs = system::reason(system::TimeLimitReached{}, Client::program, deadline.limit);
    std::set<std::string_view> different;
    std::vector<std::string> reasons;
    for (bool const hung : {false, true}) {
        for (auto const & server : servers_) {
            std::string_view const reason = hung ? hangs : server.failure;
            if (server.hung == hung && different.insert(reason).second) {
                reasons.push_back(namedReason(server.client.remote(), reason));
            }
        }
    }
    return different.size() == 1 ? std::string(*different.begin()) : joined(reasons);
}

void ServerChoice::requireOneDatabase() const {
    std::optional<std::size_t> first;
    for (std::size_t index = 0; index < statuses_.size(); ++index) {
        if (!statuses_[index]) {
            continue;
        }
        if (!first) {
            first = index;
        } else if (!areOfOneDatabase(*statuses_[*first], *statuses_[index])) {
            throw Failure("broken answer: " + whyNotOneDatabase(*first, index));
        }
    }
}

std::string ServerChoice::whyNotOneDatabase(std::size_t one, std::size_t other) const {
    auto const name = [this](std::size_t index) {
        return std::string(Vex::printable(servers_[index].client.remote()));
    };
    for (std::size_t const index : {one, other}) {
        if (statuses_[index]->model == ServerStatus::Model::standalone) {
            return "several remotes, but " + name(index) + " is a standalone server";
        }
    }
    return name(one) + " and " + name(other) + " are not of one cluster";
}

std::string ServerChoice::whyNoneIsChosen(Deadline const & deadline) const {
    if (noneAnswers()) {
        return whyNoneAnswers(deadline);
    }
    auto const answering = std::count_if(statuses_.begin(), statuses_.end(),
                                         [](auto const & status) { return status.has_value(); });
    bool const relays = std::any_of(statuses_.begin(), statuses_.end(), [](auto const & status) {
        return status && status->model == ServerStatus::Model::relay;
    });
    auto const ofThem = " the " + std::to_string(answering) + " of " +
                        std::to_string(statuses_.size()) + (relays ? " relays" : " servers") +
                        " that answer";
    return relays ? "unreachable: no server behind" + ofThem
                  : "unreachable: no leader among" + ofThem;
}

std::optional<std::size_t> ServerChoice::chosen(Deadline const & deadline) {
    auto const leader = leaderOf(statuses_);
    auto follower = serverToRead(statuses_);
    for (int again = 0; leader && !follower && again < mostCatchingUp; ++again) {
        pause(catchingUp, deadline);
        ask(followers(), deadline);
        follower = serverToRead(statuses_);
    }
    return follower ? follower : leader;
}

Client const & ServerChoice::server(Deadline const & deadline) {
    for (;;) {
        ask(all(), deadline);
        requireAnswers(deadline);
        requireOneDatabase();
        if (auto const index = chosen(deadline)) {
            return servers_[*index].client;
        }
        growPatience();
        pause(betweenQuestions, deadline);
        if (deadline.isOver()) {
            throw Failure(whyNoneIsChosen(deadline));
        }
    }
}

} // namespace vxshow::sources::ovsdb
