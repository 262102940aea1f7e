#include "platform/audio/PeakLimiterDSP.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace platform {

namespace {

// Beyond this nothing is told apart, so that the reciprocal of every magnitude is a normal number. For such a
// number the single-rounded x * (1 / x) is never above 1.
constexpr float kLargest = 0x1p100F;

// Taken off the first memory per frame, so that it reaches 0 instead of the denormals; far below what a gain
// of single precision can show.
constexpr double kVanish = 1e-15;

constexpr std::int32_t kMagnitudeBits = 0x7FFFFFFF;
constexpr std::int32_t kOneBits = 0x3F800000;

/// All bits set if the magnitude is above 1.0 or the sample isn't finite, otherwise 0.
inline std::int32_t exceedsCeiling(float sample) noexcept {
    return -static_cast<std::int32_t>((std::bit_cast<std::int32_t>(sample) & kMagnitudeBits) > kOneBits);
}

inline float madeFinite(float sample) noexcept {
    const float known = sample == sample ? sample : 0.0F; // NOLINT(misc-redundant-expression): false for NaN
    return std::max(-kLargest, std::min(known, kLargest));
}

} // namespace

void PeakLimiterDSP::prepare(double sampleRate) noexcept {
    sampleRate_ = sampleRate;
    updateCoefficients();
    reset();
}

void PeakLimiterDSP::reset() noexcept {
    held_ = 0.0;
    memory_ = 0.0;
    fresh_ = true;
    preGain_ = preGainTarget_;
    rampLeft_ = 0;
}

void PeakLimiterDSP::updateCoefficients() noexcept {
    const auto keepFor = [this](float seconds) { return std::exp(-1.0 / (double{seconds} * sampleRate_)); };
    attackKeep_ = keepFor(attack_);
    decayKeep_ = keepFor(decay_);
}

void PeakLimiterDSP::set(float attackSeconds, float decaySeconds, float preGainDecibels) noexcept {
    if (attackSeconds != attack_ || decaySeconds != decay_) {
        attack_ = attackSeconds;
        decay_ = decaySeconds;
        updateCoefficients();
    }
    if (preGainDecibels != preGainDecibels_) {
        preGainDecibels_ = preGainDecibels;
        preGainTarget_ = static_cast<float>(std::pow(10.0, double{preGainDecibels} / 20.0));
        if (fresh_) {
            preGain_ = preGainTarget_;
        } else {
            // The bound only keeps the conversion in range at absurd rates.
            rampLeft_ = static_cast<std::uint32_t>(
                std::clamp(std::round(kPreGainRampSeconds * sampleRate_), 1.0, 1e9));
            preGainStep_ = (preGainTarget_ - preGain_) / rampLeft_;
        }
    }
}

void PeakLimiterDSP::rampPreGain(float* gains, std::uint32_t frames) noexcept {
    for (std::uint32_t i = 0; i < frames; ++i) {
        if (rampLeft_ > 0) {
            --rampLeft_;
            preGain_ = rampLeft_ == 0 ? preGainTarget_ : preGain_ + preGainStep_;
        }
        gains[i] = static_cast<float>(preGain_);
    }
}

template <bool kStereo>
void PeakLimiterDSP::processChunk(float* left, float* right, std::uint32_t frames) noexcept {
    // Local copies, so that the loops below are free of aliasing and vectorise.
    alignas(64) float l[kChunk];
    alignas(64) float r[kChunk];
    std::memcpy(l, left, frames * sizeof(float));
    if constexpr (kStereo) {
        std::memcpy(r, right, frames * sizeof(float));
    }

    if (rampLeft_ > 0) {
        alignas(64) float gains[kChunk];
        rampPreGain(gains, frames);
        for (std::uint32_t i = 0; i < frames; ++i) {
            l[i] *= gains[i];
            if constexpr (kStereo) {
                r[i] *= gains[i];
            }
        }
    } else {
        const auto gain = static_cast<float>(preGain_);
        for (std::uint32_t i = 0; i < frames; ++i) {
            l[i] *= gain;
            if constexpr (kStereo) {
                r[i] *= gain;
            }
        }
    }

    std::int32_t exceeds = 0;
    for (std::uint32_t i = 0; i < frames; ++i) {
        exceeds |= exceedsCeiling(l[i]);
        if constexpr (kStereo) {
            exceeds |= exceedsCeiling(r[i]);
        }
    }

    if (exceeds != 0 || held_ != 0.0) {
        alignas(64) float ceilingGain[kChunk];
        alignas(64) double reduction[kChunk];
        for (std::uint32_t i = 0; i < frames; ++i) {
            l[i] = madeFinite(l[i]);
            float magnitude = std::max(1.0F, std::abs(l[i]));
            if constexpr (kStereo) {
                r[i] = madeFinite(r[i]);
                magnitude = std::max(magnitude, std::abs(r[i]));
            }
            ceilingGain[i] = 1.0F / magnitude;
            reduction[i] = 1.0 - double{ceilingGain[i]};
        }

        const double attackKeep = attackKeep_;
        const double attackTake = 1.0 - attackKeep;
        const double decayKeep = decayKeep_;
        double held = held_;
        double memory = memory_;
        for (std::uint32_t i = 0; i < frames; ++i) {
            held = std::max(reduction[i], held * decayKeep - kVanish);
            memory = std::min(held, memory * attackKeep + held * attackTake);
            reduction[i] = memory;
        }
        held_ = held;
        memory_ = memory;

        for (std::uint32_t i = 0; i < frames; ++i) {
            const float gain = std::min(static_cast<float>(1.0 - reduction[i]), ceilingGain[i]);
            l[i] *= gain;
            if constexpr (kStereo) {
                r[i] *= gain;
            }
        }
    }

    std::memcpy(left, l, frames * sizeof(float));
    if constexpr (kStereo) {
        std::memcpy(right, r, frames * sizeof(float));
    }
}

void PeakLimiterDSP::process(float* left, float* right, std::uint32_t frames) noexcept {
    while (frames > 0) {
        fresh_ = false;
        const std::uint32_t count = std::min(frames, kChunk);
        if (right != nullptr) {
            processChunk<true>(left, right, count);
            right += count;
        } else {
            processChunk<false>(left, nullptr, count);
        }
        left += count;
        frames -= count;
    }
}

} // namespace platform
