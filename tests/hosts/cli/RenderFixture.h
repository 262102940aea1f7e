// A folder with an input, and renders of it.
#pragma once

#include "Program.h"
#include "SoundFiles.h"

#include <gtest/gtest.h>

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
    std::string path(const std::string& name) const { return folder.path(name); }
    std::string bytes(const std::string& name) const { return contentOf(path(name)); }
    std::vector<float> samples(const std::string& name) const { return readSound(path(name)).samples; }
    void input(const Sound& sound, int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT) const {
        writeSound(path("in.wav"), sound, format);
    }

    TemporaryFolder folder;
};

} // namespace test
