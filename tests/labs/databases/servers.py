"""The servers of one folder: starting, stopping and signalling them by their process ids."""

import json
import os
import shutil
import signal
import socket
import subprocess
import time

from databases import DATABASE, SCHEMA, LabError


def free_ports(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


class LostPort(LabError):
    """A port that was free has been taken by another process."""


def ports_of(pid):
    """The TCP ports on which a process listens."""
    sockets = set()
    folder = f"/proc/{pid}/fd"
    for descriptor in os.listdir(folder):
        try:
            sockets.add(os.readlink(os.path.join(folder, descriptor)))
        except FileNotFoundError:
            pass  # closed meanwhile
    with open("/proc/net/tcp", encoding="utf-8") as file:
        rows = [line.split() for line in file.readlines()[1:]]
    listens = "0A"
    return {
        int(row[1].split(":")[1], 16)
        for row in rows if row[3] == listens and f"socket:[{row[9]}]" in sockets
    }


class Servers:
    """DIR/lab.json lists them; DIR/nK/ has db, sock, ctl, pid and log of node K."""

    def __init__(self, folder):
        self.folder = os.path.abspath(folder)
        self.file = os.path.join(self.folder, "lab.json")
        self.nodes = {}

    def create(self, nodes):
        if os.path.exists(self.file):
            raise LabError(f"{self.folder} already has a lab: take it `down` first")
        if len(self.path("n1", "sock")) > 100:
            raise LabError("the folder's path is too long for a unix socket (107 bytes)")
        self.nodes = nodes
        for name in nodes:
            os.makedirs(self.path(name, ""))
        with open(self.file, "w", encoding="utf-8") as file:
            json.dump(nodes, file)

    def read(self):
        try:
            with open(self.file, encoding="utf-8") as file:
                self.nodes = json.load(file)
        except FileNotFoundError:
            raise LabError(f"{self.folder} has no lab") from None
        return self

    def path(self, name, file):
        return os.path.join(self.folder, name, file)

    def unix(self, name):
        return "unix:" + self.path(name, "sock")

    def tcp(self, name):
        return f"tcp:127.0.0.1:{self.nodes[name]['port']}"

    def remotes(self):
        """The unix sockets, the tcp ports and the ssl ports, each as one REMOTE."""
        kinds = [map(self.unix, self.nodes), map(self.tcp, self.nodes)]
        if all("ssl_port" in node for node in self.nodes.values()):
            kinds.append(f"ssl:127.0.0.1:{node['ssl_port']}" for node in self.nodes.values())
        return [",".join(kind) for kind in kinds]

    def start(self, name):
        node = self.nodes[name]
        command = [
            "ovsdb-server", "-vconsole:off", "-vsyslog:off", self.path(name, "db"),
            "--remote=p" + self.unix(name), f"--remote=ptcp:{node['port']}:127.0.0.1",
            "--unixctl=" + self.path(name, "ctl"), "--pidfile=" + self.path(name, "pid"),
            "--log-file=" + self.path(name, "log"), "--detach", "--no-chdir",
        ]
        if "ssl_port" in node:
            key, certificate, authority = node["ssl"]
            command += [
                f"--remote=pssl:{node['ssl_port']}:127.0.0.1", "--private-key=" + key,
                "--certificate=" + certificate, "--ca-cert=" + authority,
            ]
        subprocess.run(command, check=True)
        self.expect_ports(name)

    def start_first_time(self, name):
        """Takes the lab down if one of its servers does not start."""
        try:
            self.start(name)
        except LabError:
            self.down()
            raise

    def expect_ports(self, name):
        """Checks that a server listens on its ports: it only logs a failure to, and continues."""
        node = self.nodes[name]
        wanted = {node[kind] for kind in ("port", "ssl_port", "raft") if kind in node}
        for _ in range(1000):
            pid = self.pid(name)
            if pid is None:
                raise LabError(f"{name} has ended: see {self.path(name, 'log')}")
            missing = wanted - ports_of(pid)
            if not missing:
                return
            time.sleep(0.01)
        raise LostPort(f"{name} did not get port {', '.join(map(str, sorted(missing)))}")

    def wait(self, name):
        wait = ["ovsdb-client", "-vconsole:off", "-t", "60", "wait"]
        subprocess.run([*wait, self.unix(name), DATABASE, "connected"], check=True)

    def pid(self, name):
        """None if it is not running; an id that another process has reused does not count."""
        try:
            with open(self.path(name, "pid"), encoding="utf-8") as file:
                pid = int(file.read())
            with open(f"/proc/{pid}/cmdline", "rb") as file:
                words = file.read().split(b"\0")
        except (FileNotFoundError, ProcessLookupError, ValueError):
            return None
        return pid if self.path(name, "db").encode() in words else None

    def role(self, name):
        """The role that it reports, and its term."""
        if self.pid(name) is None:
            return "down", "-"
        text = subprocess.run(
            ["ovs-appctl", "-T", "5", "-t", self.path(name, "ctl"), "cluster/status", DATABASE],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False,
        ).stdout
        lines = dict(line.split(": ", 1) for line in text.splitlines() if ": " in line)
        return lines.get("Role", "standalone"), lines.get("Term", "-")

    def find(self, wanted):
        """The node with that name, or one that is the leader or a follower."""
        if wanted in self.nodes:
            return wanted
        if wanted not in ("leader", "follower"):
            raise LabError(f"no node {wanted}: the nodes are {' '.join(self.nodes)}")
        for name in self.nodes:
            if self.role(name)[0] == wanted:
                return name
        raise LabError(f"no {wanted} at the moment")

    def signal(self, name, number):
        pid = self.pid(name)
        if pid is None:
            raise LabError(f"{name} is not running")
        os.kill(pid, number)
        if number in (signal.SIGKILL, signal.SIGTERM):
            for _ in range(6000):
                if self.pid(name) is None:
                    return
                time.sleep(0.005)
            raise LabError(f"{name} (pid {pid}) does not end")

    def down(self, keep=False):
        for name in self.nodes:
            pid = self.pid(name)
            if pid is not None:
                os.kill(pid, signal.SIGCONT)
                self.signal(name, signal.SIGTERM)
        if keep:
            return
        for name in self.nodes:
            shutil.rmtree(self.path(name, ""))
        os.unlink(self.file)
        if not os.listdir(self.folder):
            os.rmdir(self.folder)


def with_free_ports(start):
    """Picks ports again, a few times, if another process took one before the server could."""

    def started(*arguments, **more):
        for _ in range(4):
            try:
                return start(*arguments, **more)
            except LostPort:
                pass
        return start(*arguments, **more)

    return started


@with_free_ports
def single(folder, port=None, source=None, ssl=None):
    """One server with an empty database, or a copy of the file `source`."""
    if port:
        try:
            socket.create_server(("127.0.0.1", port)).close()
        except OSError as error:  # the server would only log it and continue without the port
            raise LabError(f"port {port}: {error.strerror}") from None
    servers = Servers(folder)
    ports = free_ports(2)
    node = {"port": port or ports[0]}
    if ssl:
        node.update(ssl_port=ports[1], ssl=[os.path.abspath(file) for file in ssl])
    servers.create({"n1": node})
    if source:
        shutil.copy(source, servers.path("n1", "db"))
    else:
        subprocess.run(["ovsdb-tool", "create", servers.path("n1", "db"), SCHEMA], check=True)
    servers.start_first_time("n1")
    return servers


@with_free_ports
def cluster(folder, count, election_timer=None, source=None):
    """A Raft cluster; returns once every node has joined."""
    servers = Servers(folder)
    ports = free_ports(2 * count)
    pairs = zip(ports[::2], ports[1::2])
    servers.create({f"n{i}": {"port": a, "raft": b} for i, (a, b) in enumerate(pairs, 1)})
    first = f"tcp:127.0.0.1:{servers.nodes['n1']['raft']}"
    for name, node in servers.nodes.items():
        own = f"tcp:127.0.0.1:{node['raft']}"
        if name == "n1":
            timer = [f"--election-timer={election_timer}"] if election_timer else []
            content = os.path.abspath(source or SCHEMA)
            command = timer + ["create-cluster", servers.path(name, "db"), content, own]
        else:
            command = ["join-cluster", servers.path(name, "db"), DATABASE, own, first]
        subprocess.run(["ovsdb-tool", "-vconsole:off", *command], check=True)
        servers.start_first_time(name)
        servers.wait(name)
    return servers
