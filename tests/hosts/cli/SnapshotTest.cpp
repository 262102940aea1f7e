// Runs the built program's snapshot command.
#include "Program.h"
#include "TemporaryFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace {

class Snapshot : public testing::Test {
protected:
    test::Outcome snapshot(const std::string& name, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments{"snapshot", folder.path(name)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return test::runProgram(arguments);
    }
    std::string picture(const std::string& name, const std::vector<std::string>& options = {}) {
        const test::Outcome outcome = snapshot(name, options);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return test::contentOf(folder.path(name));
    }
    // Width and height from a PNG's header.
    static std::pair<int, int> sizeOf(const std::string& png) {
        const auto number = [&](std::size_t at) {
            int value = 0;
            for (std::size_t index = at; index < at + 4; ++index) {
                value = value * 256 + static_cast<unsigned char>(png.at(index));
            }
            return value;
        };
        return {number(16), number(20)};
    }

    test::TemporaryFolder folder;
};

TEST_F(Snapshot, WritesAPictureOfTheCanvasByDefault) {
    EXPECT_EQ(sizeOf(picture("panel.png")), (std::pair{512, 340}));
}

TEST_F(Snapshot, SizeIsInPointsAndScaleInPixelsPerPoint) {
    EXPECT_EQ(sizeOf(picture("a.png", {"--size", "300x200", "--scale", "2"})), (std::pair{600, 400}));
    EXPECT_EQ(sizeOf(picture("b.PNG", {"--size", "1024x680.4"})), (std::pair{1024, 680}));
}

TEST_F(Snapshot, WritesSVGAndPDFByTheNamesEnding) {
    EXPECT_THAT(picture("a.svg"), HasSubstr("<svg"));
    EXPECT_EQ(picture("a.pdf").substr(0, 5), "%PDF-");
}

TEST_F(Snapshot, TheSamePictureComesAgainByteForByte) {
    EXPECT_EQ(picture("a.png"), picture("b.png"));
}

TEST_F(Snapshot, ParametersMetersAndContrastShow) {
    const std::string plain = picture("plain.png");
    EXPECT_NE(picture("a.png", {"--set", "threshold=0.2"}), plain);
    EXPECT_NE(picture("b.png", {"--set", "bypass=1"}), plain);
    EXPECT_NE(picture("c.png", {"--meters", "0.8,0.7,0.6,0.5"}), plain);
    EXPECT_NE(picture("d.png", {"--contrast", "0.9"}), plain);
    // The last of several settings counts, and the mode has no place on the panel.
    EXPECT_EQ(picture("e.png", {"--set", "mix=0", "--set", "mix=1", "--set", "mode=2"}), plain);
}

TEST_F(Snapshot, WrongArgumentsAreRefusedWithTheOptionAndTheRemedy) {
    struct Case {
        std::vector<std::string> options;
        const char* says;
    };
    for (const auto& [options, says] :
         {Case{{"--size", "512"}, "--size: '512'"}, Case{{"--size", "0x340"}, "--size"},
          Case{{"--size", "axb"}, "512x340"}, Case{{"--size", "nanx340"}, "--size"},
          Case{{"--scale", "0"}, "--scale"}, Case{{"--scale", "x"}, "--scale"},
          Case{{"--meters", "1,2,3"}, "--meters"}, Case{{"--meters", "1,2,3,4,5"}, "--meters"},
          Case{{"--meters", "1,2,3,inf"}, "--meters"}, Case{{"--contrast", "1.5"}, "from 0 to 1"},
          Case{{"--set", "nonsense=1"}, "--set"}, Case{{"--set", "mix=2"}, "--set"}}) {
        const test::Outcome outcome = snapshot("x.png", options);
        EXPECT_EQ(outcome.status, 2) << options[1];
        EXPECT_THAT(outcome.errors, HasSubstr(says));
        EXPECT_FALSE(std::filesystem::exists(folder.path("x.png")));
    }
}

TEST_F(Snapshot, AnUnknownEndingIsRefused) {
    const test::Outcome outcome = snapshot("panel.jpeg");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr(".png, .svg or .pdf"));
}

TEST_F(Snapshot, ASizeThatIsTooLargeFailsWithoutAFile) {
    const test::Outcome outcome = snapshot("x.png", {"--size", "1e6x1e6"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("16384"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("x.png")));
}

TEST_F(Snapshot, AMissingFolderFails) {
    EXPECT_EQ(snapshot("missing/x.png").status, 1);
}

} // namespace
