// The built program as a process of its own.
#pragma once

#include "support/TemporaryDirectory.h"

#include <csignal>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace test {

/// Runs with a home of its own until it ends or the object does.
class AppProcess {
public:
    explicit AppProcess(std::vector<std::string> arguments, const TemporaryDirectory& home)
        : output_(home.file("output")), errors_(home.file("errors")) {
        arguments.insert(arguments.begin(), QOR_LIMITER_APP_EXECUTABLE);
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        const std::string state = home.file("state");
        child_ = ::fork();
        if (child_ == 0) {
            ::dup2(::open(output_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
            ::dup2(::open(errors_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            ::setenv("HOME", home.path().c_str(), 1);
            ::setenv("XDG_STATE_HOME", state.c_str(), 1);
            ::setenv("JACK_DEFAULT_SERVER", "qor-limiter-test-without-server", 1);
            ::execv(pointers[0], pointers.data());
            ::_exit(127);
        }
    }
    ~AppProcess() {
        if (child_ > 0) {
            ::kill(child_, SIGKILL);
            wait();
        }
    }
    AppProcess(const AppProcess&) = delete;
    AppProcess& operator=(const AppProcess&) = delete;

    pid_t id() const { return child_; }
    void signal(int number) const { ::kill(child_, number); }
    /// The exit status, or 128 + the signal that ended it.
    int wait() {
        int status = 0;
        ::waitpid(child_, &status, 0);
        child_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    std::string output() const { return readFile(output_); }
    std::string errors() const { return readFile(errors_); }

private:
    std::string output_;
    std::string errors_;
    pid_t child_ = 0;
};

} // namespace test
