#pragma once

#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/ovsdb/Client.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"
#include "vxshow/sources/ovsdb/ServerStatus.h"

#include <chrono>
#include <string>
#include <vector>

namespace vxshow::sources::ovsdb {

/// Chooses which server to read: one of a cluster, or one of several relays of a database.
class ServerChoice {
public:
    /// `address` outlives this.
    explicit ServerChoice(DatabaseAddress const & address);

    /// Asks all of them for their status in parallel, and chooses one. While none is suitable, it
    /// asks again, and waits longer for those that hang. Raises `Failure` if all of them refuse to
    /// answer, if they do not serve the same database, or if none is suitable by the deadline.
    Client const & server(Deadline const & deadline);

private:
    struct Server {
        /// A healthy server answers within 20 ms, but one that another client reads can be busy
        /// for a second or two.
        static constexpr std::chrono::milliseconds patienceAtFirst{1000};

        Client client;
        bool asked = false;
        std::string failure = {}; ///< why it has not answered
        bool hung = false;        ///< whether it used up its time when it was last asked
        std::chrono::milliseconds patience = patienceAtFirst; ///< the time it is given to answer
    };

    /// Asks those in `which`; the others keep their last status.
    void ask(std::vector<std::size_t> const & which, Deadline const & deadline);
    void askOne(std::size_t index, Deadline const & deadline);
    /// For the next round.
    void growPatience();
    std::optional<std::size_t> chosen(Deadline const & deadline);

    std::vector<std::size_t> all() const;
    std::vector<std::size_t> followers() const;
    bool noneAnswers() const;
    void requireAnswers(Deadline const & deadline) const;
    void requireOneDatabase() const;
    std::string whyNoneAnswers(Deadline const & deadline) const;
    std::string whyNotOneDatabase(std::size_t one, std::size_t other) const;
    std::string whyNoneIsChosen(Deadline const & deadline) const;

    std::vector<Server> servers_;
    Servers statuses_; ///< by position
};

} // namespace vxshow::sources::ovsdb
