// Whole signals through a CLAP instance, and through a bare UnitHost for comparison.
#pragma once

#include "ClapTestHost.h"
#include "HostRendering.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace test {

/// A parameter that moves at a frame of the signal.
struct Move {
    std::uint32_t frame;
    clap_id id;
    double value;
};

/// Renders in blocks. `moves` must be sorted by their frames.
inline Stereo renderClap(ClapPluginUnderTest& plugin, const Stereo& input, std::uint32_t block,
                         const std::vector<Move>& moves = {}) {
    Stereo output = silence(input.frames());
    std::size_t next = 0;
    for (std::size_t start = 0; start < input.frames(); start += block) {
        const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(block, input.frames() - start));
        ClapEventList events;
        for (; next < moves.size() && moves[next].frame < start + count; ++next) {
            events.value(moves[next].frame - static_cast<std::uint32_t>(start), moves[next].id,
                         moves[next].value);
        }
        const float* const in[2] = {input.left.data() + start, input.right.data() + start};
        float* const out[2] = {output.left.data() + start, output.right.data() + start};
        plugin.process(in, out, count, events.table());
    }
    return output;
}

/// What a UnitHost of this program makes of the same, in blocks of its own choice.
inline Stereo renderBare(const Stereo& input, const std::vector<Move>& moves = {}, std::uint32_t block = 512,
                         double sampleRate = 48000.0) {
    const auto host = makeHost();
    EXPECT_TRUE(host->activate(sampleRate).ok());
    std::vector<qor::host::HostEvent> events;
    for (const Move& move : moves) {
        events.push_back(parameterAt(move.frame, move.id, static_cast<float>(move.value)));
    }
    return render(*host, input, block, events);
}

/// Moves of every parameter, all over a signal, some of them at one frame, in an order that a seed decides.
inline std::vector<Move> manyMoves(std::uint32_t frames, std::size_t number, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Move> moves;
    for (std::size_t i = 0; i < number; ++i) {
        const clap_id id = random() % 12;
        const double unit = static_cast<double>(static_cast<float>(random() % 1001) / 1000.0F);
        const bool isSwitch = id == 7 || id == 8 || id == 11;
        const double value = id == 6    ? static_cast<double>(random() % 4)
                             : isSwitch ? static_cast<double>(random() % 2)
                                        : unit;
        moves.push_back({static_cast<std::uint32_t>(random() % frames), id, value});
    }
    std::stable_sort(moves.begin(), moves.end(),
                     [](const Move& a, const Move& b) { return a.frame < b.frame; });
    return moves;
}

} // namespace test
