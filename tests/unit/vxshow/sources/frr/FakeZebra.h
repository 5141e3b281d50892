#pragma once

#include "vxshow/sources/frr/Conversation.h"
#include "vxshow/sources/frr/Documents.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// A zebra that answers from captures of a real one, or as a test sets it.
///
/// The captures are of two VTEPs of one fabric: VTEP 1 has every kind of entry but those of an
/// Ethernet segment of its own, which VTEP 2 has.
namespace vxshow::test {

/// Prints answers as `vtysh -E` does. A known command without an answer has an empty document; an
/// unknown one has a complaint, which ends the run.
class FakeZebra {
public:
    /// Has only empty answers, but EVPN is active.
    FakeZebra();

    /// Answers from the captures of that VTEP, including questions about one VNI or MAC address.
    explicit FakeZebra(std::string const & vtep);

    /// The answer to a command; the test fails if there is no such command.
    std::string & operator[](std::string const & command);

    /// What `vtysh` prints.
    std::string printed(std::vector<std::string> const & commands) const;

    sources::frr::RunVtysh run() {
        return [this](std::vector<std::string> const & commands) {
            runs.push_back(commands);
            return system::FileBytes::copyOf(printed(commands));
        };
    }

    sources::Answer ask(state::Selection const & selection = {});

    std::vector<std::vector<std::string>> runs; ///< the commands of each run so far

private:
    std::string answerTo(std::string const & command) const;
    void addOnes(std::string const & all, std::string const & start, std::string const & end);

    std::map<std::string, std::string> answers_;
};

/// The file of that name among the captures of real VTEPs.
std::string frrCapture(std::string const & name);

/// All facts, one on each line.
std::string linesOf(sources::Facts const & facts);

/// Those of its lines that begin with `start`.
std::string linesOf(sources::Facts const & facts, std::string_view start);

/// The lines about MAC addresses: first the local ones, then the remote ones.
std::string macsOf(sources::Answer const & answer);

/// Asks for what is selected. Returns the message of the failure, or "accepted" if it succeeds.
/// Checks that the message is one line of printable ASCII.
std::string failureOf(FakeZebra & zebra, state::Selection const & selection = {});

/// An L2 VNI of the VTEP 10.0.0.1, in VRF red with the interface brN, flooded to 10.0.0.2.
std::string l2Vni(unsigned vni);

/// Entries of `show evpn mac vni all`.
std::string localMac(std::string const & mac, unsigned sequence = 0);
std::string remoteMac(std::string const & mac, std::string const & vtep, unsigned sequence = 0);

/// Answers about VNI 10 alone, with those MAC addresses.
FakeZebra zebraWithMacs(std::string const & entries);

} // namespace vxshow::test
