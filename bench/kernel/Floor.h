// The bare dependency chain of each gain law: what bounds a pass whatever surrounds it.
#pragma once

#include "bench/kernel/Signals.h"

#include <cmath>

namespace bench {

struct LawSettings {
    float threshold;
    float attack;
    float release;
};

/// Only what leads from one gain to the next; the targets are there beforehand.
inline float hyperbolicChain(const float* targets, int frames, float gain, const LawSettings& law) {
    for (int i = 0; i < frames; ++i) {
        if (gain > targets[i]) {
            gain = gain - (law.attack * (gain - targets[i]));
        } else {
            gain = gain + (law.release * (targets[i] - gain));
        }
    }
    return gain;
}

/// The same of the threshold law, whose detector looks at the level behind the gain; the magnitudes are there
/// beforehand.
inline float thresholdChain(const float* magnitudes, int frames, float gain, const LawSettings& law) {
    for (int i = 0; i < frames; ++i) {
        const float level = (0.5F * gain) * magnitudes[i];
        if (level > law.threshold) {
            gain = gain - (law.attack * (level - law.threshold));
        } else {
            gain = gain + (law.release * (1.0F - gain));
        }
    }
    return gain;
}

} // namespace bench
