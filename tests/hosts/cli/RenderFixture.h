// A folder with an input, and renders of it.
#pragma once

#include "Program.h"
#include "SoundFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace test {

class Render : public testing::Test {
protected:
    /// Renders `in.wav` to `name` and expects success. Returns what was printed.
    Outcome render(const std::string& name, const std::vector<std::string>& options = {}) {
        const Outcome outcome = attempt(name, options);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome;
    }
    Outcome attempt(const std::string& name, const std::vector<std::string>& options = {},
                    const std::function<void()>& prepare = {}) {
        std::vector<std::string> arguments{"render", path("in.wav"), "-o", path(name)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runProgram(arguments, prepare);
    }
    /// Renders what comes through a pipe and expects success.
    void renderPiped(const std::string& content, const std::string& name) {
        const std::string pipe = path("pipe");
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        const auto feed = [&] {
            if (::fork() == 0) {
                std::ofstream(pipe, std::ios::binary) << content;
                ::_exit(0);
            }
        };
        const Outcome outcome = runProgram({"render", pipe, "-o", path(name)}, feed);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        std::filesystem::remove(pipe);
    }
    std::string path(const std::string& name) const { return folder.path(name); }
    std::string bytes(const std::string& name) const { return contentOf(path(name)); }
    std::vector<float> samples(const std::string& name) const { return readSound(path(name)).samples; }
    void input(const Sound& sound, int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT) const {
        writeSound(path("in.wav"), sound, format);
    }

    TemporaryFolder folder;
};

} // namespace test
