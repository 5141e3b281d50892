#include "tests/live/Command.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void execute(std::vector<std::string> words) {
    std::vector<char *> argv;
    for (std::string & word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    execvp(argv[0], argv.data());
    _exit(127);
}

int openFile(std::string const & path) {
    return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
}

std::string contentOf(std::string const & path) {
    std::ifstream const file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string joined(std::vector<std::string> const & words) {
    std::string text;
    for (auto const & word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// Creates a folder that other users can enter; `pattern` is its path, with XXXXXX at the end.
std::string newFolder(std::string pattern) {
    EXPECT_TRUE(mkdtemp(pattern.data())) << pattern;
    std::filesystem::permissions(pattern, std::filesystem::perms(0755));
    return pattern;
}

/// The folder of this process, which contains all others, so that one guard removes them all.
std::string const & processFolder() {
    static std::string const path = [] {
        auto made = newFolder("/tmp/vxshow-live-XXXXXX");
        // A lab in it goes down by itself, and needs its files until then.
        std::string const remove = R"(tries=0
            while ls -d "$0"/*/lab && [ $tries -lt 600 ]; do tries=$((tries + 1)); sleep 0.1; done
            rm -rf "$0")";
        outputOf({labProgram("when-gone"), std::to_string(getpid()), "sh", "-c", remove, made});
        return made;
    }();
    return path;
}

} // namespace

Folder::Folder() : path_(newFolder(processFolder() + "/XXXXXX")) {}

Folder::~Folder() {
    std::filesystem::remove_all(path_);
}

std::string Folder::write(std::string const & name, std::string const & text) const {
    std::ofstream(file(name)) << text;
    return file(name);
}

std::string labProgram(std::string const & name) {
    return TESTS_FOLDER "/labs/" + name;
}

std::string liveProgram(std::string const & name) {
    return TESTS_FOLDER "/live/" + name;
}

Finished run(std::vector<std::string> const & words) {
    TemporaryFile const out("");
    TemporaryFile const err("");
    pid_t const pid = forked();
    if (pid == 0) {
        dup2(openFile("/dev/null"), STDIN_FILENO);
        dup2(openFile(out.path()), STDOUT_FILENO);
        dup2(openFile(err.path()), STDERR_FILENO);
        execute(words);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return {contentOf(out.path()), contentOf(err.path()),
            WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}

std::string outputOf(std::vector<std::string> const & words) {
    auto const finished = run(words);
    EXPECT_EQ(finished.status, 0) << joined(words) << ": " << finished.err;
    return finished.out;
}

std::vector<std::string> linesOf(std::string const & text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

Background::Background(std::vector<std::string> const & words) {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    pid_ = forked();
    if (pid_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(ends[1], STDOUT_FILENO);
        execute(words);
    }
    close(ends[1]);
    char byte = '\0';
    EXPECT_EQ(read(ends[0], &byte, 1), 1) << joined(words) << " did not start";
    output_ = ends[0];
}

Background::~Background() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(output_);
}
