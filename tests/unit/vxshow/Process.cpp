#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Pipe {
    int reader = -1;
    int writer = -1;

    Pipe() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) == 0) {
            reader = ends[0];
            writer = ends[1];
        }
    }
};

void closeFd(int & fd) {
    if (fd >= 0) {
        close(fd);
        fd = -1;
    }
}

/// Runs in the child: sets up the standard streams and signals, and executes the program.
[[noreturn]] void executeProgram(std::vector<std::string> const & arguments,
                                 Process::Setting const & setting, int in, int out, int err) {
    dup2(in, STDIN_FILENO);
    dup2(setting.outFd >= 0 ? setting.outFd : out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    if (setting.closeOutput) {
        close(STDOUT_FILENO);
    }
    std::signal(SIGPIPE, setting.ignoreSigpipe ? SIG_IGN : SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    unsetenv("VXSHOW_STATE");
    unsetenv("VXSHOW_FABRIC");
    setenv("NO_COLOR", "1", 1);
    // No test depends on the settings of the user who runs it.
    setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
    setenv("XDG_CACHE_HOME", "/dev/null", 1);
    setenv("VXSHOW_SYSTEM_CONFIG", "", 1);
    if (!setting.stateFile.empty()) {
        setenv("VXSHOW_STATE", setting.stateFile.c_str(), 1);
    }
    if (setting.inChild) {
        setting.inChild();
    }
    std::vector<char *> argv;
    char const * const other = std::getenv("VXSHOW_PROGRAM");
    std::string program = other ? other : VXSHOW_PROGRAM;
    argv.push_back(program.data());
    auto copies = arguments;
    for (std::string & argument : copies) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
}

} // namespace

pid_t forked() {
    pid_t const child = fork();
    if (child < 0) {
        std::perror("the tests cannot go on without a process of their own");
        std::abort();
    }
    return child;
}

Process::Process(std::vector<std::string> const & arguments) : Process(arguments, Setting()) {}

Process::Process(std::vector<std::string> const & arguments, Setting const & setting) {
    Pipe in;
    Pipe out;
    Pipe err;
    pid_ = forked();
    if (pid_ == 0) {
        executeProgram(arguments, setting, in.reader, out.writer, err.writer);
    }
    close(in.reader);
    close(out.writer);
    close(err.writer);
    in_ = in.writer;
    out_ = out.reader;
    err_ = err.reader;
    auto const old = std::signal(SIGPIPE, SIG_IGN);
    for (std::size_t at = 0; at < setting.input.size();) {
        ssize_t const sent = write(in_, setting.input.data() + at, setting.input.size() - at);
        if (sent <= 0) {
            break;
        }
        at += static_cast<std::size_t>(sent);
    }
    std::signal(SIGPIPE, old);
    if (!setting.input.empty()) {
        closeInput();
    }
}

Process::~Process() {
    closeFd(in_);
    closeFd(out_);
    closeFd(err_);
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
}

void Process::signal(int number) const {
    if (pid_ <= 0) {
        ADD_FAILURE() << "no signal " << number << " to a process that has ended";
        return;
    }
    kill(pid_, number);
}

std::string Process::readSome(std::size_t bytes) {
    std::string some(bytes, '\0');
    ssize_t const got = read(out_, some.data(), bytes);
    some.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return some;
}

void Process::closeReader() {
    closeFd(out_);
}

void Process::closeInput() {
    closeFd(in_);
}

Finished Process::finish() {
    closeFd(in_);
    Finished finished;
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (out_ >= 0 || err_ >= 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "vxshow did not end within a minute";
            signal(SIGKILL);
        }
        pollfd fds[] = {{out_, POLLIN, 0}, {err_, POLLIN, 0}};
        poll(fds, 2, 1000);
        for (int i = 0; i < 2; ++i) {
            if (fds[i].revents == 0) {
                continue;
            }
            char part[65536];
            int & fd = i == 0 ? out_ : err_;
            ssize_t const got = read(fd, part, sizeof(part));
            if (got > 0) {
                (i == 0 ? finished.out : finished.err).append(part, static_cast<std::size_t>(got));
            } else {
                closeFd(fd);
            }
        }
    }
    if (pid_ <= 0) {
        ADD_FAILURE() << "vxshow has been waited for already";
        return finished;
    }
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    finished.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    finished.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return finished;
}

Finished runVxshow(std::vector<std::string> const & arguments, Process::Setting const & setting) {
    return Process(arguments, setting).finish();
}

TemporaryFile::TemporaryFile(std::string const & content) {
    path_ = std::filesystem::temp_directory_path() / "vxshow-test-XXXXXX";
    int const fd = mkstemp(path_.data());
    FILE * file = fdopen(fd, "w");
    std::fwrite(content.data(), 1, content.size(), file);
    std::fclose(file);
}

TemporaryFile::~TemporaryFile() {
    unlink(path_.c_str());
}

std::string smallSnapshot() {
    return R"({"format": "vxlan-controller-state", "version": 1, "received": {"switches":
{"leaf1": {"4098": {"unicast": {"02:00:00:00:00:01": {"vtep": "10.0.0.1", "moves": 3}}}}}}})";
}

std::string largeSnapshot(unsigned entries) {
    std::string text = R"({"format": "vxlan-controller-state", "version": 1, "received":
{"switches": {"leaf1": {"10": {"unicast": {)";
    for (unsigned i = 0; i < entries; ++i) {
        char entry[64];
        std::snprintf(entry, sizeof(entry), "%s\n\"0200.%04x.%04x\": {\"vtep\": \"10.0.0.1\"}",
                      i == 0 ? "" : ",", i >> 16, i & 0xffff);
        text += entry;
    }
    return text + "}}}}}}";
}
