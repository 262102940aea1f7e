#include "hosts/cli/LoudnessGate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace qor::cli {

namespace {

constexpr double kAbsoluteGate = -70.0; // LUFS
constexpr double kRelativeGate = -10.0; // LU
constexpr double kClassesPerUnit = 100.0;
constexpr std::size_t kClasses = 14000; // up to +70 LUFS; what is louder belongs to the last

std::size_t classOf(double loudness) noexcept {
    const double place = std::floor((loudness - kAbsoluteGate) * kClassesPerUnit);
    return static_cast<std::size_t>(std::clamp(place, 0.0, static_cast<double>(kClasses - 1)));
}

} // namespace

LoudnessGate::LoudnessGate() : classes_(kClasses) {}

void LoudnessGate::add(double blockLoudness) noexcept {
    if (!(blockLoudness > kAbsoluteGate)) {
        return;
    }
    Class& place = classes_[classOf(blockLoudness)];
    place.energy += std::pow(10.0, blockLoudness / 10.0);
    ++place.blocks;
}

double LoudnessGate::loudnessFrom(std::size_t firstClass) const noexcept {
    double energy = 0.0;
    std::uint64_t blocks = 0;
    for (std::size_t i = firstClass; i < classes_.size(); ++i) {
        energy += classes_[i].energy;
        blocks += classes_[i].blocks;
    }
    return blocks == 0 ? -std::numeric_limits<double>::infinity()
                       : 10.0 * std::log10(energy / static_cast<double>(blocks));
}

double LoudnessGate::integrated() const noexcept {
    const double ungated = loudnessFrom(0);
    return std::isinf(ungated) ? ungated : loudnessFrom(classOf(ungated + kRelativeGate));
}

} // namespace qor::cli
