// The peak meter of one output channel: straight lines up, a short hold, straight lines down.
#pragma once

#include "kernel/StraightFall.h"
#include "platform/core/RealTime.h"
#include "platform/core/Saturate.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace qor {

/// The magnitude; a negative zero and NaN pass as they are.
inline float getAbsVal(float x) {
    return x < 0.0F ? -x : x;
}

/// Reads audio on the render thread and never changes it. `getPeakLimited` may be called from any thread.
class Follower {
public:
    float samplerate = 48000.0F; // hertz
    float attack = 0.01F;        // seconds of a full-scale rise
    float release = 1.0F;        // seconds of a full-scale fall
    float decay = 0.001F;        // seconds of hold before the fall
    float attackSamples = 480.0F;
    float releaseSamples = 48000.0F;
    std::int32_t holdCounter = 48; // samples left before the fall
    double attackStep = 0.0;       // rise per sample
    double releaseStep = 0.0;      // fall per sample
    double value = 0.0;            // the envelope, linear; 1.0 is full scale

    Follower() {
        setSamplerate(48000.0F);
        init();
    }

    /// Also brings back the metering's own times.
    void setSamplerate(float s) {
        samplerate = s;
        setAttack(0.01F);
        setRelease(0.5F);
        setDecay(0.0001F);
    }

    /// Ignored outside 0.0 to 1.0 seconds.
    void setAttack(float a) {
        if (a < 0.0F || a > 1.0F) {
            return;
        }
        attack = a;
        attackSamples = atLeast16(attack * samplerate);
        attackStep = flushed(1.0 / static_cast<double>(attackSamples));
    }

    /// Ignored outside 0.0 to 10.0 seconds.
    void setRelease(float r) {
        if (r < 0.0F || r > 10.0F) {
            return;
        }
        release = r;
        releaseSamples = atLeast16(release * samplerate);
        releaseStep = flushed(1.0 / static_cast<double>(releaseSamples));
    }

    /// Ignored outside 0.0 to 1.0 seconds.
    void setDecay(float d) {
        if (d < 0.0F || d > 1.0F) {
            return;
        }
        decay = d;
        holdCounter = holdSamples();
    }

    void init() { value = 0.0; }
    void reset() { init(); }

    void processSample(const float* sample) { processBuffer(sample, 1); }

    void processBuffer(const float* buffer, long count) QOR_NONBLOCKING {
        Motion motion(*this);
        while (count >= kRun) {
            if (!motion.fallThrough(buffer)) {
                motion.follow(buffer, kRun);
            }
            buffer += kRun;
            count -= kRun;
        }
        motion.follow(buffer, count);
        holdCounter = motion.hold;
        value = motion.v;
    }

    /// 0.0 to 1.0.
    float getPeakLimited() const {
        const auto peak = static_cast<float>(value);
        return peak > 1.0F ? 1.0F : (peak < 0.0F ? 0.0F : peak);
    }

private:
    static constexpr int kRun = StraightFall::kSteps;

    // The state of one pass.
    struct Motion {
        explicit Motion(const Follower& f)
            : rise(f.attackStep), step(f.releaseStep), rearmed(f.holdSamples()), hold(f.holdCounter),
              v(f.value), fall(f.releaseStep) {}

        // The samples one by one.
        void follow(const float* samples, long count) {
            for (long i = 0; i < count; ++i) {
                const double a = widenedMagnitude(samples[i]);
                if (a > v) {
                    v += rise;
                    hold = rearmed;
                } else if (a < v) {
                    if (hold > 0) {
                        --hold;
                    } else {
                        hold = 0;
                        v -= step;
                        if (v < 0.0) {
                            v = 0.0;
                        }
                    }
                }
            }
        }

        // Most of the time the samples lie below a falling value. If a whole run does, it is passed over at
        // once, free of the latency of its subtractions; if not, nothing has changed.
        bool fallThrough(const float* run) {
            if (hold > 0) {
                return false;
            }
            const double end = fall.after(v);
            if (!StraightFall::allBelow(run, end)) {
                return false;
            }
            v = end;
            hold = 0;
            return true;
        }

        double rise;
        double step;
        std::int32_t rearmed;
        std::int32_t hold;
        double v;
        StraightFall fall;
    };

    // Compares as `getAbsVal` does, and costs the same for every sample: no branch on a noise's sign, and no
    // conversion of a subnormal float, which processors are slow at; its double is its bits times 2^-149.
    static double widenedMagnitude(float x) {
        const float magnitude = std::fabs(x);
        if (magnitude < 0x1p-126F) {
            return static_cast<double>(std::bit_cast<std::int32_t>(magnitude)) * 0x1p-149;
        }
        return magnitude;
    }

    static float atLeast16(float samples) { return samples < 16.0F ? 16.0F : samples; }

    std::int32_t holdSamples() const { return platform::saturatingCast<std::int32_t>(decay * samplerate); }

    // A guard made for floats, applied to a double: it looks at mantissa bits and silences about one step in
    // 256. None of the usual rates is among them; at 1000 Hz the rise is.
    static double flushed(double step) {
        const auto low = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(step));
        return (low & 0x7F800000U) == 0 ? 0.0 : step;
    }
};

} // namespace qor
