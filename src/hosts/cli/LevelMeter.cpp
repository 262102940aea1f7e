#include "hosts/cli/LevelMeter.h"

#include <algorithm>
#include <cmath>

namespace qor::cli {

namespace {

constexpr std::uint64_t kHopsInBlock = 4; // blocks of 0.4 s that begin every 0.1 s

} // namespace

LevelMeter::LevelMeter(int sampleRate)
    : state_(ebur128_init(2, static_cast<unsigned long>(sampleRate), EBUR128_MODE_M)),
      hop_(static_cast<std::size_t>(sampleRate + 5) / 10) {}

float LevelMeter::finite(float sample) noexcept {
    if (std::isfinite(sample)) {
        return sample;
    }
    ++nonFinite_;
    return 0.0F;
}

void LevelMeter::add(const float* left, const float* right, std::size_t frames) {
    interleaved_.resize(2 * frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const float l = finite(left[i]);
        const float r = finite(right[i]);
        peak_ = std::max({peak_, std::abs(l), std::abs(r)});
        interleaved_[2 * i] = l;
        interleaved_[2 * i + 1] = r;
    }
    if (state_ != nullptr) {
        addLoudness(frames);
    }
}

// Feeds up to each end of a hop, and there hands the block that ends with it to the gate.
void LevelMeter::addLoudness(std::size_t frames) noexcept {
    for (std::size_t at = 0; at < frames;) {
        const std::size_t count = std::min(frames - at, hop_ - inHop_);
        ebur128_add_frames_float(state_.get(), &interleaved_[2 * at], count);
        at += count;
        inHop_ += count;
        if (inHop_ < hop_) {
            continue;
        }
        inHop_ = 0;
        double block = 0.0;
        if (++hops_ >= kHopsInBlock && ebur128_loudness_momentary(state_.get(), &block) == EBUR128_SUCCESS) {
            gate_.add(block);
        }
    }
}

double LevelMeter::peak() const noexcept {
    return 20.0 * std::log10(static_cast<double>(peak_));
}

double LevelMeter::loudness() const noexcept {
    return gate_.integrated();
}

} // namespace qor::cli
