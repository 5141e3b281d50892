#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Processes.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>

namespace {

/// Whether the process has ended, without reaping it.
bool hasEnded(Process const & process) {
    siginfo_t info{};
    EXPECT_EQ(waitid(P_PID, static_cast<id_t>(process.pid()), &info, WEXITED | WNOWAIT | WNOHANG),
              0);
    return info.si_pid != 0;
}

/// Sources that hang, and the children that vxshow starts to query them.
class Children : public testing::Test {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::database); }

    /// A fabric of one source that never answers.
    std::string fabricOf(std::string const & timeLimit, FabricText text) const {
        return folder_.write("fabric.toml", text.text() + "time_limit = " + timeLimit + "\n");
    }

    /// Ends vxshow with a signal while at least `expected` children of it hang.
    static Finished ended(std::string const & fabric, int signal,
                          std::function<std::size_t()> const & children, std::size_t expected) {
        Process::Setting setting;
        setting.inChild = [] { unsetenv("VXSHOW_FABRIC"); };
        Process process({"--fabric", fabric, "mac", "received"}, setting);
        waitUntil("the source to be asked", [&] { return children() >= expected; });
        process.signal(signal);
        return process.finish();
    }

    /// Lets vxshow reach a time limit while at least `expected` children of it hang. Tries longer
    /// limits until the children are seen in time.
    Finished limited(FabricText const & text, std::function<std::size_t()> const & children,
                     std::size_t expected) const {
        for (std::string const limit : {"1", "5", "25"}) {
            Process::Setting setting;
            setting.inChild = [] { unsetenv("VXSHOW_FABRIC"); };
            Process process({"--fabric", fabricOf(limit, text), "mac", "received"}, setting);
            bool seen = false;
            waitUntil("the source to be asked, or the time limit", [&] {
                seen = children() >= expected;
                return seen || hasEnded(process);
            });
            auto finished = process.finish();
            if (seen) {
                return finished;
            }
        }
        ADD_FAILURE() << "the source was never asked";
        return {};
    }

private:
    Folder folder_;
};

/// A database that never answers. Its clients have the remote on their command line.
class HangingDatabase : public Children {
protected:
    void SetUp() override {
        VXSHOW_NEEDS_LAB(Lab::database);
        server_ = std::make_unique<FakeOvsdb>("silent");
    }

    std::size_t clients() const { return processesWith("ovsdb-client", server_->remote()).size(); }

    FabricText text() const { return FabricText().database("hangs", server_->remote()); }

    std::string fabric() const { return fabricOf("600", text()); }

    Finished endedBy(int signal) const {
        return ended(
            fabric(), signal, [this] { return clients(); }, 1);
    }

private:
    std::unique_ptr<FakeOvsdb> server_;
};

/// A vtysh that never answers and ends only with SIGKILL, with a child of the same kind.
class HangingVtysh : public Children {
protected:
    std::size_t processes() const { return processesWith("fake-vtysh", vtysh_.folder()).size(); }

    FabricText text() const { return FabricText().vtysh("hangs", vtysh_.words()); }

    Finished endedBy(int signal) const {
        return ended(
            fabricOf("600", text()), signal, [this] { return processes(); }, 2);
    }

private:
    FakeVtysh vtysh_{"stubborn"};
};

} // namespace

TEST_F(HangingDatabase, ItsClientEndsWithTheTimeLimit) {
    auto const finished = limited(
        text(), [this] { return clients(); }, 1);
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(clients(), 0U);
}

TEST_F(HangingDatabase, ItsClientEndsWithCtrlC) {
    auto const finished = endedBy(SIGINT);
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.err, "");
    waitUntil("the client to be gone", [this] { return clients() == 0; });
}

TEST_F(HangingDatabase, ItsClientEndsWithSigterm) {
    EXPECT_EQ(endedBy(SIGTERM).signal, SIGTERM);
    waitUntil("the client to be gone", [this] { return clients() == 0; });
}

TEST_F(HangingDatabase, ItsClientEndsWithTheTerminal) {
    EXPECT_EQ(endedBy(SIGHUP).signal, SIGHUP);
    waitUntil("the client to be gone", [this] { return clients() == 0; });
}

TEST_F(HangingDatabase, ItsClientEndsWhenVxshowIsKilled) {
    EXPECT_EQ(endedBy(SIGKILL).signal, SIGKILL);
    waitUntil("the client to be gone", [this] { return clients() == 0; });
}

TEST_F(HangingDatabase, ItsClientEndsWithAWatch) {
    Process process({"--fabric", fabric(), "--watch", "1", "mac", "received"});
    waitUntil("the source to be asked", [this] { return clients() > 0; });
    process.signal(SIGINT);
    EXPECT_EQ(process.finish().status, 130);
    waitUntil("the client to be gone", [this] { return clients() == 0; });
}

TEST_F(HangingVtysh, ItEndsWithItsChildAtTheTimeLimit) {
    auto const finished = limited(
        text(), [this] { return processes(); }, 2);
    EXPECT_EQ(finished.status, 1);
    waitUntil("both to be gone", [this] { return processes() == 0; });
}

TEST_F(HangingVtysh, ItEndsWithItsChildAtCtrlC) {
    EXPECT_EQ(endedBy(SIGINT).status, 130);
    waitUntil("both to be gone", [this] { return processes() == 0; });
}

TEST_F(HangingVtysh, ItEndsWithItsChildAtSigterm) {
    EXPECT_EQ(endedBy(SIGTERM).signal, SIGTERM);
    waitUntil("both to be gone", [this] { return processes() == 0; });
}

TEST_F(HangingVtysh, ItEndsWithItsChildAndTheTerminal) {
    EXPECT_EQ(endedBy(SIGHUP).signal, SIGHUP);
    waitUntil("both to be gone", [this] { return processes() == 0; });
}

TEST_F(HangingVtysh, ItEndsWhenVxshowIsKilled) {
    // Nothing is left to end what the child has started itself, so this one starts nothing.
    FakeVtysh const alone("silent");
    Folder const folder;
    auto const fabric = folder.write(
        "fabric.toml", FabricText().vtysh("hangs", alone.words(), "time_limit = 600").text());
    auto const running = [&] { return processesWith("fake-vtysh", alone.folder()).size(); };
    EXPECT_EQ(ended(fabric, SIGKILL, running, 1).signal, SIGKILL);
    waitUntil("it to be gone", [&] { return running() == 0; });
}
