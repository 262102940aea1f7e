// The gate of integrated loudness (EBU R 128) in a fixed amount of memory.
#pragma once

#include <cstdint>
#include <vector>

namespace qor::cli {

/// Takes the loudness of successive overlapping blocks and gives the loudness of all that pass the two gates:
/// -70 LUFS, and 10 LU below the mean of those. Blocks are kept as sums in classes of 0.01 LU, so that only
/// the relative gate itself is that coarse.
class LoudnessGate {
public:
    LoudnessGate();

    /// The loudness of one block in LUFS; negative infinity for silence.
    void add(double blockLoudness) noexcept;
    /// In LUFS; negative infinity if no block passes.
    double integrated() const noexcept;

private:
    struct Class {
        double energy = 0.0; // sum over the blocks
        std::uint64_t blocks = 0;
    };
    double loudnessFrom(std::size_t firstClass) const noexcept;

    std::vector<Class> classes_;
};

} // namespace qor::cli
