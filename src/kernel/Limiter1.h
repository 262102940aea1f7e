// One channel of gain reduction: a gain computer with two laws, without look-ahead or delay.
#pragma once

#include "platform/core/MathCalls.h"

#include <cmath>

namespace qor {

/// All settings are normalised, 0.0 to 1.0, and no setter checks them. The coefficients are per sample and
/// know nothing of the sample rate. The buffer operations run on the render thread, in place; the settings
/// may be written from another thread and take effect with the next buffer.
class Limiter1 {
public:
    float input = 0.5F; // no parameter reaches it
    float attack = 0.1F;
    float release = 0.66F;
    float threshold = 0.9F;
    float trim = 0.6F;
    float knee = 1.0F;     // above 0.5 the hyperbolic law, else the threshold law
    float mix = 1.0F;      // wet share
    float audition = 0.0F; // above 0.5 the element outputs what it takes away
    float thresholdCoefficient = 0.0F;
    float attackCoefficient = 0.0F;
    float releaseCoefficient = 0.0F;
    float trimCoefficient = 0.0F;
    float gainTarget = 0.0F; // target (hyperbolic law) or detected level (threshold law) of the last sample
    float gain = 1.0F;       // the running gain; survives a reset
    float inputGain = 1.0F;

    /// 1.0 at 0.0 down to 0.01 at 1.0.
    void setAttack(float a) {
        attack = a;
        attackCoefficient = powerOfTen(-2.0F * attack);
    }

    /// 0.01 at 0.0 down to 0.00001 at 1.0.
    void setRelease(float r) {
        release = r;
        releaseCoefficient = powerOfTen(-2.0F - (3.0F * release));
    }

    /// Computed for the law in force now: a later change of `knee` leaves the coefficient as it is. The laws
    /// run in opposite directions (10.0 down to 0.1, or 0.01 up to 1.0), so that more always means less
    /// limiting.
    void setThreshold(float t) {
        threshold = t;
        thresholdCoefficient =
            knee > 0.5F ? powerOfTen(1.0F - (2.0F * threshold)) : powerOfTen((2.0F * threshold) - 2.0F);
    }

    /// 0.1 to 10.0; the exponent is computed in double precision.
    void setTrim(float t) {
        trim = t;
        trimCoefficient = powerOfTen(static_cast<float>((2.0 * static_cast<double>(trim)) - 1.0));
    }

    void updateParameters() {
        inputGain = input * 2.0F;
        setThreshold(threshold);
        setTrim(trim);
        setAttack(attack);
        setRelease(release);
    }

    void reset() {
        updateParameters();
        gainTarget = 0.0F;
    }

    /// `sidechain` may be null. If it is there it is what is detected and also what the wet signal is made
    /// of.
    void processSample(float* sample, const float* sidechain) {
        if (sidechain != nullptr) {
            processBufferSidechain(sample, sidechain, 1);
        } else {
            processBuffer(sample, 1);
        }
    }

    /// Works on the sum with `other`, or on the sum of both side-chains if `sidechainA` is there.
    void processSampleLinked(float* sample, const float* other, const float* sidechainA,
                             const float* sidechainB) {
        if (sidechainA != nullptr) {
            run(sample, 1, [=](int i, float /*in*/) { return sidechainA[i] + sidechainB[i]; });
        } else {
            processBuffersLinked(sample, other, 1);
        }
    }

    void processBuffer(float* buffer, int count) QOR_NONBLOCKING {
        run(buffer, count, [](int /*i*/, float in) { return in; });
    }

    void processBufferSidechain(float* buffer, const float* sidechain, int count) QOR_NONBLOCKING {
        run(buffer, count, [=](int i, float /*in*/) { return sidechain[i]; });
    }

    /// In place on `a`; `b` is only read.
    void processBuffersLinked(float* a, const float* b, int count) QOR_NONBLOCKING {
        run(a, count, [=](int i, float in) { return in + b[i]; });
    }

    /// Drops the side-chains: the linked mode sounds the same with the input filter active.
    void processBuffersSidechainLinked(float* a, const float* b, const float* /*sidechainA*/,
                                       const float* /*sidechainB*/, int count) QOR_NONBLOCKING {
        processBuffersLinked(a, b, count);
    }

    /// The meter value: 1.0 without reduction, falling toward 0.0 with the gain. The logarithm is the natural
    /// one.
    float getCompression() const {
        const float d = 1.0F - gain;
        if (!(d > 0.0F)) {
            return 1.0F;
        }
        float v = 20.0F * platform::libraryLogarithm(d);
        if (v < -60.0F) {
            v = -60.0F;
        }
        return v / -60.0F;
    }

private:
    static float powerOfTen(float exponent) { return platform::libraryPower(10.0F, exponent); }

    // (0.5 * g) * magnitude. Halving the magnitude instead takes one operation out of the recurrence and
    // gives the same bits as long as halving is exact, which it is above 2^-125.
    static float detectedLevel(float g, float magnitude) {
        const float half = 0.5F * magnitude;
        if (half < 0x1p-125F || std::fabs(g) < 0x1p-125F) [[unlikely]] {
            return (0.5F * g) * magnitude;
        }
        return g * half;
    }

    // One pass: settings read once, state in locals, law and audition chosen before the loop, so that the
    // recurrence of `gain` alone bounds its speed. The two ways of a law stay branches: a gain lies close to
    // the lower envelope of its targets and mostly goes one way, and a predicted branch takes the other way's
    // latency out of the recurrence.
    template <bool hyperbolic, bool auditioned, class Source>
    void pass(float* buffer, int count, Source source) {
        const float thresholdNow = thresholdCoefficient;
        const float attackNow = attackCoefficient;
        const float releaseNow = releaseCoefficient;
        const float trimNow = trimCoefficient;
        const float inputGainNow = inputGain;
        const float wet = mix;
        const float dry = 1.0F - mix;
        float target = gainTarget;
        float g = gain;
        for (int i = 0; i < count; ++i) {
            const float in = buffer[i];
            const float x = source(i, in) * inputGainNow;
            if constexpr (hyperbolic) {
                target = 1.0F / (1.0F + (thresholdNow * std::fabs(x)));
                if (g > target) {
                    g = g - (attackNow * (g - target));
                } else {
                    g = g + (releaseNow * (target - g));
                }
            } else {
                target = detectedLevel(g, std::fabs(x));
                if (target > thresholdNow) {
                    g = g - (attackNow * (target - thresholdNow));
                } else {
                    g = g + (releaseNow * (1.0F - g));
                }
            }
            float y = (x * trimNow) * g;
            if constexpr (auditioned) {
                y = in - y;
            }
            buffer[i] = (y * wet) + (in * dry);
        }
        gainTarget = target;
        gain = g;
    }

    template <class Source>
    void run(float* buffer, int count, Source source) {
        if (knee > 0.5F) {
            if (audition > 0.5F) {
                pass<true, true>(buffer, count, source);
            } else {
                pass<true, false>(buffer, count, source);
            }
        } else if (audition > 0.5F) {
            pass<false, true>(buffer, count, source);
        } else {
            pass<false, false>(buffer, count, source);
        }
    }
};

} // namespace qor
