#pragma once

#include "vxshow/mount/hardware_vtep/DatabaseAddress.h"
#include "vxshow/mount/hardware_vtep/OvsdbClient.h"
#include "vxshow/mount/hardware_vtep/OvsdbServerStatus.h"
#include "vxshow/mount/live/Deadline.h"

#include <string>
#include <vector>

namespace vxshow {

/// The servers of a cluster, and which of them is read.
class OvsdbServerChoice {
public:
    /// `address` outlives this.
    explicit OvsdbServerChoice(DatabaseAddress const & address);

    /// Asks them all at once what they are, and chooses one. While there is no leader it asks
    /// again. Raises `SourceFailure`: when each has refused to answer, when they are not of
    /// one cluster, when there is no leader until the deadline.
    OvsdbClient const & server(Deadline const & deadline);

private:
    struct Server {
        OvsdbClient client;
        std::string failure = {}; ///< why it has not answered
        bool hung = false;        ///< whether it took all its time when it was last asked
    };

    /// Asks those of `which`; the others keep what they have answered.
    void ask(std::vector<std::size_t> const & which, Deadline const & deadline);
    void askOne(std::size_t index, Deadline const & deadline);
    std::optional<std::size_t> chosen(Deadline const & deadline);

    std::vector<std::size_t> all() const;
    std::vector<std::size_t> followers() const;
    void requireAnswers() const;
    void requireOneDatabase() const;
    std::string nobodyLeads(Deadline const & deadline) const;

    std::vector<Server> servers_;
    OvsdbServers statuses_; ///< by position
};

} // namespace vxshow
