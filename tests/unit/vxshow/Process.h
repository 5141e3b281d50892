#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

/// The output of a program and how it ended.
struct Finished {
    std::string out;
    std::string err;
    int status = -1; ///< exit status, or -1
    int signal = 0;  ///< the signal that ended it, or 0
};

/// As `fork`, but if that fails, the test program ends with a message. A test that went on would
/// sooner or later send a signal to process -1, which means every process.
pid_t forked();

/// A running `vxshow`, with pipes on its standard streams.
class Process {
public:
    /// How the program is started, apart from its arguments.
    struct Setting {
        std::string input = {};             ///< what it reads from standard input
        std::string stateFile = {};         ///< the value of VXSHOW_STATE; not set when empty
        int outFd = -1;                     ///< its standard output; a pipe if negative
        bool ignoreSigpipe = false;         ///< whether it is started with SIGPIPE ignored
        bool closeOutput = false;           ///< whether it is started without standard output
        std::function<void()> inChild = {}; ///< called in the child before the program starts
    };

    explicit Process(std::vector<std::string> const & arguments);
    Process(std::vector<std::string> const & arguments, Setting const & setting);
    ~Process();
    Process(Process const &) = delete;
    Process & operator=(Process const &) = delete;

    /// Its process id; -1 once it has been waited for.
    pid_t pid() const noexcept { return pid_; }

    /// Sends it a signal. The test fails if it has already been waited for.
    void signal(int number) const;

    /// Waits for output and reads up to `bytes` of it.
    std::string readSome(std::size_t bytes);

    /// Closes our end of its output, as a reader such as `head` does.
    void closeReader();

    /// Closes our end of its standard input.
    void closeInput();

    /// Reads the rest of the output and waits for the program. After 60 seconds the program is
    /// killed and the test fails.
    Finished finish();

private:
    pid_t pid_ = -1;
    int in_ = -1;
    int out_ = -1;
    int err_ = -1;
};

/// Runs `vxshow` from start to end.
Finished runVxshow(std::vector<std::string> const & arguments,
                   Process::Setting const & setting = {});

/// A file that lives as long as the object.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string const & content);
    ~TemporaryFile();
    TemporaryFile(TemporaryFile const &) = delete;
    TemporaryFile & operator=(TemporaryFile const &) = delete;

    std::string const & path() const noexcept { return path_; }

private:
    std::string path_;
};

/// A snapshot with one unicast entry.
std::string smallSnapshot();

/// A snapshot of one VNI with that many unicast entries.
std::string largeSnapshot(unsigned entries);
