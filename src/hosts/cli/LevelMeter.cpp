#include "hosts/cli/LevelMeter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qor::cli {

LevelMeter::LevelMeter(int sampleRate)
    : state_(
          ebur128_init(2, static_cast<unsigned long>(sampleRate), EBUR128_MODE_I | EBUR128_MODE_HISTOGRAM)) {}

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
        ebur128_add_frames_float(state_.get(), interleaved_.data(), frames);
    }
}

double LevelMeter::peak() const noexcept {
    return 20.0 * std::log10(static_cast<double>(peak_));
}

double LevelMeter::loudness() const noexcept {
    double value = -std::numeric_limits<double>::infinity();
    if (state_ != nullptr) {
        ebur128_loudness_global(state_.get(), &value);
    }
    return value;
}

} // namespace qor::cli
