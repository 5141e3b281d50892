#pragma once

#include "tests/unit/vxshow/Process.h"

#include <string>
#include <sys/types.h>
#include <vector>

/// Runs programs other than `vxshow`, and provides temporary folders.

/// A folder that is removed with the object. It is in a folder of this process under /tmp, which
/// is removed even if the process is killed. Other users can enter it, since some daemons give up
/// their privileges. Its path is short enough for a unix socket in it.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;

    std::string const & path() const noexcept { return path_; }

    std::string file(std::string const & name) const { return path_ + "/" + name; }

    /// Writes a file and returns its path.
    std::string write(std::string const & name, std::string const & text) const;

private:
    std::string path_;
};

/// A program of tests/labs or tests/live.
std::string labProgram(std::string const & name);
std::string liveProgram(std::string const & name);

/// Runs a program to its end; the first word is looked up in PATH. Processes that it leaves
/// running share no descriptors with this one.
Finished run(std::vector<std::string> const & words);

/// Runs a program, expects it to succeed, and returns what it printed.
std::string outputOf(std::vector<std::string> const & words);

/// The lines of `text`.
std::vector<std::string> linesOf(std::string const & text);

/// A program that runs as long as the object, and no longer than this process. The constructor
/// waits until it has printed a line.
class Background {
public:
    explicit Background(std::vector<std::string> const & words);
    ~Background();
    Background(Background const &) = delete;
    Background & operator=(Background const &) = delete;

private:
    pid_t pid_ = -1;
    int output_ = -1;
};
