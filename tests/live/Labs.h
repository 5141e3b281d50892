#pragma once

#include "tests/live/Command.h"

#include <memory>
#include <string>
#include <vector>

/// Real and fake peers, each in a folder of its own; they end with the object, or with this
/// process.

/// An `ovsdb-server` with a `hardware_vtep` database.
class OvsdbLab {
public:
    /// Starts it with the options of `ovsdb-lab single`; it is empty unless `--from` names a file
    /// that `ovsdb-lab make` has written.
    explicit OvsdbLab(std::vector<std::string> const & options = {});
    ~OvsdbLab();
    OvsdbLab(OvsdbLab const &) = delete;
    OvsdbLab & operator=(OvsdbLab const &) = delete;

    std::string const & remote() const { return remotes_.at(0); }

    std::string const & tcpRemote() const { return remotes_.at(1); }

    std::string const & sslRemote() const { return remotes_.at(2); }

    std::string const & folder() const { return folder_.path(); }

    /// Fills it with the small database.
    void fillSmall() const;

    /// Fills it with that many VNIs and MACs.
    void fill(unsigned vnis, unsigned macs) const;

    /// Runs one transaction, which has to succeed.
    void transact(std::string const & operations) const;

    /// Runs `vtep-ctl` on it.
    void vtepCtl(std::vector<std::string> const & words) const;

    /// Sends its server a signal, by name such as "STOP".
    void signal(std::string const & name) const;

private:
    Folder folder_;
    std::vector<std::string> remotes_;
};

/// A Raft cluster of three with a `hardware_vtep` database.
class OvsdbCluster {
public:
    OvsdbCluster();
    ~OvsdbCluster();
    OvsdbCluster(OvsdbCluster const &) = delete;
    OvsdbCluster & operator=(OvsdbCluster const &) = delete;

    /// The unix sockets of all three, separated by commas.
    std::string const & remotes() const { return remotes_.at(0); }

    std::string remoteOf(std::string const & node) const;

    /// Sends a signal to a node, the "leader" or a "follower", and returns the node's name.
    std::string signal(std::string const & node, std::string const & name) const;

    /// Starts a node again, and waits until it has joined.
    void start(std::string const & node) const;

    /// Waits until a node reports to be the leader.
    void waitForLeader() const;

private:
    Folder folder_;
    std::vector<std::string> remotes_;
};

/// An `ovsdb-server` that relays the `hardware_vtep` database of others.
class OvsdbRelay {
public:
    /// Waits until it is connected to one of the servers at `remotes`.
    explicit OvsdbRelay(std::string const & remotes);

    std::string remote() const { return "unix:" + folder_.file("sock"); }

private:
    Folder folder_;
    std::unique_ptr<Background> server_;
};

/// Three FRR VTEPs, 10.0.0.1 to 10.0.0.3, with hosts, routes and an Ethernet segment.
class EvpnLab {
public:
    EvpnLab();
    ~EvpnLab();
    EvpnLab(EvpnLab const &) = delete;
    EvpnLab & operator=(EvpnLab const &) = delete;

    /// The lab that all tests share, set up by the first call.
    static EvpnLab & shared();

    /// The path space of the daemons of VTEP 1, 2 or 3.
    std::string pathSpace(unsigned vtep) const;

    /// The words that run vtysh on a VTEP.
    std::vector<std::string> vtysh(unsigned vtep) const;

    /// Runs `evpn-lab`.
    Finished lab(std::vector<std::string> const & words) const;

    /// The process id of a VTEP's zebra.
    std::string zebra(unsigned vtep) const;

private:
    Folder folder_;
    std::string prefix_;
};

/// A database server on a unix socket that behaves as requested; see fake-ovsdb-server.
class FakeOvsdb {
public:
    /// `tables` are its rows, as JSON.
    explicit FakeOvsdb(std::string const & behaviour, std::string const & tables = "{}");

    std::string remote() const { return "unix:" + folder_.file("sock"); }

private:
    Folder folder_;
    std::unique_ptr<Background> server_;
};

/// The command of a vtysh that behaves as requested; see fake-vtysh. Its last word is a folder
/// whose name no other process has on its command line.
class FakeVtysh {
public:
    explicit FakeVtysh(std::string const & behaviour);

    std::vector<std::string> words() const;

    /// Sets its answer to a command.
    void answers(std::string const & command, std::string const & text) const;

    std::string const & folder() const { return folder_.path(); }

private:
    Folder folder_;
    std::string behaviour_;
};
