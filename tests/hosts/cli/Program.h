// Runs the built program as a user would.
#pragma once

#include "TemporaryFolder.h"

#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace test {

struct Outcome {
    int status = -1; // exit status, or 128 + the signal that ended it
    std::string output;
    std::string errors;
    long peakMemory = 0; // KiB; at least what the test itself holds
};

/// `prepare` runs in the new process before the program starts.
inline Outcome runProgram(std::vector<std::string> arguments, const std::function<void()>& prepare = {}) {
    const TemporaryFolder folder;
    arguments.insert(arguments.begin(), QOR_LIMITER_EXECUTABLE);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    const std::string output = folder.path("output");
    const std::string errors = folder.path("errors");
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
        ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        if (prepare) {
            prepare();
        }
        ::execv(pointers[0], pointers.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contentOf(output),
            contentOf(errors), usage.ru_maxrss};
}

} // namespace test
