#include "vxshow/mount/hardware_vtep/OvsdbServerChoice.h"

#include "Vex/Errors.h"
#include "vxshow/mount/live/SourceFailure.h"
#include "vxshow/process/Reason.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>

namespace vxshow {

namespace {

using std::chrono::milliseconds;

/// A healthy server answers within 20 ms, but one that another client reads may be busy for a
/// second or two. One that hangs is not to cost the others' time, least of all twice.
constexpr milliseconds mostForOne{1000};
constexpr milliseconds mostForOneThatHung{200};

/// An election takes 0.8 to 1.7 s with the timer that servers come with.
constexpr milliseconds betweenQuestions{100};

/// A follower that was behind when it was asked has caught up a moment later.
constexpr milliseconds catchingUp{5};
constexpr int mostCatchingUp = 3;

void pause(milliseconds time, Deadline const & deadline) {
    std::this_thread::sleep_until(deadline.within(time).end);
}

} // namespace

OvsdbServerChoice::OvsdbServerChoice(DatabaseAddress const & address)
    : statuses_(address.remotes.size()) {
    for (std::string const & remote : address.remotes) {
        servers_.push_back({OvsdbClient(remote, address.ssl)});
    }
}

void OvsdbServerChoice::askOne(std::size_t index, Deadline const & deadline) {
    auto & server = servers_[index];
    auto const most = deadline.within(server.hung ? mostForOneThatHung : mostForOne);
    std::optional<OvsdbServerStatus> status;
    try {
        status = readOvsdbServerStatus(server.client.query(ovsdbStatusRequest(), most));
        server.failure = status ? "" : "no such schema: the server has no database hardware_vtep";
        server.hung = false;
    } catch (SourceFailure const & failure) {
        server.failure = failure.what();
        server.hung = most.isOver();
    } catch (std::exception const & error) {
        server.failure = "broken answer: " + std::string(Vex::printable(error.what()));
    }
    // What was not answered because all the time is over says nothing of the server.
    if (status || !deadline.isOver()) {
        statuses_[index] = status;
    }
}

void OvsdbServerChoice::ask(std::vector<std::size_t> const & which, Deadline const & deadline) {
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

std::vector<std::size_t> OvsdbServerChoice::all() const {
    std::vector<std::size_t> which;
    for (std::size_t index = 0; index < servers_.size(); ++index) {
        which.push_back(index);
    }
    return which;
}

std::vector<std::size_t> OvsdbServerChoice::followers() const {
    std::vector<std::size_t> which;
    for (std::size_t index = 0; index < statuses_.size(); ++index) {
        if (statuses_[index] && statuses_[index]->connected && !statuses_[index]->leader) {
            which.push_back(index);
        }
    }
    return which;
}

void OvsdbServerChoice::requireAnswers() const {
    bool const none = std::none_of(statuses_.begin(), statuses_.end(),
                                   [](auto const & status) { return status.has_value(); });
    bool const hung = std::any_of(servers_.begin(), servers_.end(),
                                  [](Server const & server) { return server.hung; });
    if (none && !hung) {
        throw SourceFailure(servers_.front().failure);
    }
}

void OvsdbServerChoice::requireOneDatabase() const {
    std::optional<std::size_t> first;
    for (std::size_t index = 0; index < statuses_.size(); ++index) {
        if (!statuses_[index]) {
            continue;
        }
        if (!first) {
            first = index;
        } else if (!areOfOneCluster(*statuses_[*first], *statuses_[index])) {
            throw SourceFailure(
                "broken answer: " + Vex::printable(servers_[*first].client.remote()) + " and " +
                Vex::printable(servers_[index].client.remote()) + " are not of one cluster");
        }
    }
}

std::string OvsdbServerChoice::nobodyLeads(Deadline const & deadline) const {
    auto const answering = std::count_if(statuses_.begin(), statuses_.end(),
                                         [](auto const & status) { return status.has_value(); });
    if (answering == 0) {
        return process::reason(process::TimeLimit{}, OvsdbClient::program, deadline.limit);
    }
    return "unreachable: no leader among the " + std::to_string(answering) + " of " +
           std::to_string(statuses_.size()) + " servers that answer";
}

std::optional<std::size_t> OvsdbServerChoice::chosen(Deadline const & deadline) {
    auto const leader = leaderOf(statuses_);
    auto follower = serverToRead(statuses_);
    for (int again = 0; leader && !follower && again < mostCatchingUp; ++again) {
        pause(catchingUp, deadline);
        ask(followers(), deadline);
        follower = serverToRead(statuses_);
    }
    return follower ? follower : leader;
}

OvsdbClient const & OvsdbServerChoice::server(Deadline const & deadline) {
    for (;;) {
        ask(all(), deadline);
        requireAnswers();
        requireOneDatabase();
        if (auto const index = chosen(deadline)) {
            return servers_[*index].client;
        }
        pause(betweenQuestions, deadline);
        if (deadline.isOver()) {
            throw SourceFailure(nobodyLeads(deadline));
        }
    }
}

} // namespace vxshow
