#pragma once

#include "tests/unit/vxshow/Process.h"

#include <string>
#include <sys/types.h>
#include <vector>

/// Other programs than `vxshow`, and what the tests keep while they run.

/// A folder that lives as long as the object, with all that is in it. It stands in one of this
/// process under /tmp, which goes away when the process is killed, too. Others may enter it, as
/// daemons do that give up their privileges. Its path is short enough for that of a unix socket
/// in it.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;

    std::string const & path() const noexcept { return path_; }

    std::string file(std::string const & name) const { return path_ + "/" + name; }

    /// Writes a file and gives its path.
    std::string write(std::string const & name, std::string const & text) const;

private:
    std::string path_;
};

/// A program of tests/labs or tests/live.
std::string labProgram(std::string const & name);
std::string liveProgram(std::string const & name);

/// Runs a program to its end; the first word is looked up as a shell would. What it leaves
/// running holds nothing of ours.
Finished run(std::vector<std::string> const & words);

/// Expects it to succeed, and gives what it printed.
std::string outputOf(std::vector<std::string> const & words);

/// What `text` has on each of its lines.
std::vector<std::string> linesOf(std::string const & text);

/// A program that runs as long as the object, and no longer than this process. It is there once
/// it has printed a line.
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
