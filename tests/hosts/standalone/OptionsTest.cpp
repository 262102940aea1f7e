#include "hosts/standalone/Options.h"

#include <gtest/gtest.h>

namespace qor::app {
namespace {

ParsedOptions parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "qor-limiter-app");
    return parseOptions(static_cast<int>(arguments.size()), arguments.data());
}

TEST(Options, TakeAnySoundByDefault) {
    const ParsedOptions parsed = parse({});
    ASSERT_FALSE(parsed.exitStatus);
    EXPECT_EQ(parsed.options.sound.backend, BackendChoice::automatic);
    EXPECT_FALSE(parsed.options.sound.connect);
    EXPECT_EQ(parsed.options.sound.clientName, "qor-limiter");
    EXPECT_EQ(parsed.options.scale, 0.0);
}

TEST(Options, NameTheBackend) {
    EXPECT_EQ(parse({"--backend", "jack"}).options.sound.backend, BackendChoice::jack);
    EXPECT_EQ(parse({"--backend=rtaudio"}).options.sound.backend, BackendChoice::rtaudio);
    EXPECT_EQ(parse({"--backend", "none"}).options.sound.backend, BackendChoice::none);
    EXPECT_EQ(parse({"--backend", "auto"}).options.sound.backend, BackendChoice::automatic);
}

TEST(Options, CarryTheirValues) {
    const ParsedOptions parsed = parse({"--connect", "--name", "master", "--input-device", "1",
                                        "--output-device", "USB", "--scale", "1.5", "--log"});
    ASSERT_FALSE(parsed.exitStatus);
    EXPECT_TRUE(parsed.options.sound.connect);
    EXPECT_EQ(parsed.options.sound.clientName, "master");
    EXPECT_EQ(parsed.options.sound.devices.input, "1");
    EXPECT_EQ(parsed.options.sound.devices.output, "USB");
    EXPECT_EQ(parsed.options.scale, 1.5);
    EXPECT_TRUE(parsed.options.log);
}

TEST(Options, RefuseWhatDoesNotExist) {
    for (const std::vector<const char*>& arguments : std::vector<std::vector<const char*>>{
             {"--backend", "oss"}, {"--loud"}, {"--scale", "0"}, {"--scale", "nan"}, {"file.wav"}}) {
        EXPECT_EQ(parse(arguments).exitStatus, 2) << arguments.front();
    }
}

} // namespace
} // namespace qor::app
