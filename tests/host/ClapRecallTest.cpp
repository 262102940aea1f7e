// Sessions across processes: saved in one, brought back in another.
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

/// Runs the probe and returns its exit status; -1 if a signal ended it.
int runProbe(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), QOR_CLAP_RECALL_PROBE);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ::execv(pointers[0], pointers.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(ClapRecall, ANewProcessMakesTheSameBitsFromTheStateOfAnother) {
    const test::TemporaryDirectory directory;
    const std::string state = directory.file("session.state");
    ASSERT_EQ(runProbe({"fresh", directory.file("fresh")}), 0);
    const std::string fresh = test::readFile(directory.file("fresh"));
    ASSERT_EQ(fresh.size(), 2U * 20000U * sizeof(float));
    for (const char* seed : {"1", "2", "3", "4", "5"}) {
        ASSERT_EQ(runProbe({"save", seed, state, directory.file("saved")}), 0) << seed;
        ASSERT_EQ(runProbe({"load", state, directory.file("loaded")}), 0) << seed;
        const std::string saved = test::readFile(directory.file("saved"));
        EXPECT_TRUE(saved != fresh) << "seed " << seed << " would sound the same without the state";
        EXPECT_TRUE(test::readFile(directory.file("loaded")) == saved) << seed;
    }
}

TEST(ClapRecall, ADamagedStateIsRefusedInTheNewProcess) {
    const test::TemporaryDirectory directory;
    const std::string state = directory.file("session.state");
    ASSERT_EQ(runProbe({"save", "1", state, directory.file("saved")}), 0);
    const std::string whole = test::readFile(state);
    test::writeFile(state, whole.substr(0, whole.size() / 2));
    EXPECT_EQ(runProbe({"load", state, directory.file("loaded")}), 1);
}
