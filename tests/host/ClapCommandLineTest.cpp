// The built object against the built program, from file to file.
#include "ClapRendering.h"
#include "Program.h"
#include "SoundFiles.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace test;

TEST(ClapAndCommandLine, MakeTheSameBitsOfTheSameAutomation) {
    const Sound source = burstyNoise(30000);
    Stereo input = silence(source.frames());
    for (std::size_t i = 0; i < source.frames(); ++i) {
        input.left[i] = source.samples[2 * i];
        input.right[i] = source.samples[2 * i + 1];
    }
    const TemporaryFolder folder;
    writeSound(folder.path("in.wav"), source);
    const std::vector<Move> moves = manyMoves(30000, 250, 17);
    {
        std::ofstream list(folder.path("moves.txt"));
        for (const Move& move : moves) {
            list << move.frame << ' ' << move.id << ' ' << qor::text(static_cast<float>(move.value)) << '\n';
        }
    }
    const Outcome outcome = runProgram({"render", folder.path("in.wav"), "-o", folder.path("out.wav"),
                                        "--automation", folder.path("moves.txt")});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    const Sound wanted = readSound(folder.path("out.wav"));
    ASSERT_EQ(wanted.frames(), source.frames());

    ClapTestHost host;
    for (const std::uint32_t block : {1U, 100U, 8192U}) {
        ClapPluginUnderTest plugin(host);
        ASSERT_TRUE(plugin.activate());
        const Stereo made = renderClap(plugin, input, block, moves);
        for (std::size_t i = 0; i < source.frames(); ++i) {
            ASSERT_EQ(made.left[i], wanted.samples[2 * i]) << i << " in blocks of " << block;
            ASSERT_EQ(made.right[i], wanted.samples[2 * i + 1]) << i << " in blocks of " << block;
        }
    }
}
