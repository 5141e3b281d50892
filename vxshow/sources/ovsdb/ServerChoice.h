#pragma once

#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/ovsdb/Client.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"
#include "vxshow/sources/ovsdb/ServerStatus.h"

#include <chrono>
#include <string>
#include <vector>

namespace vxshow::sources::ovsdb {

/// The servers of a cluster, or relays of one database, and which of them is read.
class ServerChoice {
public:
    /// `address` outlives this.
    explicit ServerChoice(DatabaseAddress const & address);

    /// Asks them all at once what they are, and chooses one. While there is none to choose it
    /// asks again, and waits longer for those that hang. Raises `Failure`: when each has
    /// refused to answer, when they are not of one database, when there is none to choose until
    /// the deadline.
    Client const & server(Deadline const & deadline);

private:
    struct Server {
        /// A healthy server answers within 20 ms, but one that another client reads may be busy
        /// for a second or two.
        static constexpr std::chrono::milliseconds patienceAtFirst{1000};

        Client client;
        bool asked = false;
        std::string failure = {}; ///< why it has not answered
        bool hung = false;        ///< whether it took all its time when it was last asked
        std::chrono::milliseconds patience = patienceAtFirst; ///< the most time that it is given
    };

    /// Asks those of `which`; the others keep what they have answered.
    void ask(std::vector<std::size_t> const & which, Deadline const & deadline);
    void askOne(std::size_t index, Deadline const & deadline);
    /// For the next round.
    void growPatience();
    std::optional<std::size_t> chosen(Deadline const & deadline);

    std::vector<std::size_t> all() const;
    std::vector<std::size_t> followers() const;
    bool nobodyAnswers() const;
    void requireAnswers(Deadline const & deadline) const;
    void requireOneDatabase() const;
    std::string whyNobodyAnswers(Deadline const & deadline) const;
    std::string whyNotOneDatabase(std::size_t one, std::size_t other) const;
    std::string whyNoneIsChosen(Deadline const & deadline) const;

    std::vector<Server> servers_;
    Servers statuses_; ///< by position
};

} // namespace vxshow::sources::ovsdb
