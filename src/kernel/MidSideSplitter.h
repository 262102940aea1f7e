// Turns a left/right pair into mid/side and back, through working buffers of its own.
#pragma once

#include "kernel/FrameLimit.h"
#include "platform/core/RealTime.h"

#include <algorithm>

namespace qor {

class MidSideSplitter {
public:
    float mid[kFrameLimit];
    float side[kFrameLimit];

    MidSideSplitter() { reset(); }

    /// Only the first 4096 frames of a longer call.
    void split(const float* a, const float* b, int count) QOR_NONBLOCKING {
        count = std::min(count, kFrameLimit);
        for (int i = 0; i < count; ++i) {
            mid[i] = (a[i] + b[i]) * 0.5F;
            side[i] = (a[i] - b[i]) * 0.5F;
        }
    }

    /// Only the first 4096 frames of a longer call.
    void mix(float* a, float* b, int count) const QOR_NONBLOCKING {
        count = std::min(count, kFrameLimit);
        for (int i = 0; i < count; ++i) {
            a[i] = mid[i] + side[i];
            b[i] = mid[i] - side[i];
        }
    }

    float* getMid() { return mid; }
    float* getSide() { return side; }

    void clear() {
        std::fill_n(mid, kFrameLimit, 0.0F);
        std::fill_n(side, kFrameLimit, 0.0F);
    }
    void init() { clear(); }
    void reset() { init(); }
};

} // namespace qor
