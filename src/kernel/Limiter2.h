// A pair of limiter elements with one call per stereo mode.
#pragma once

#include "kernel/Limiter1.h"
#include "kernel/MidSideSplitter.h"

namespace qor {

/// Both channels in place, on the render thread. Each operation runs whole-buffer passes, one element after
/// the other. The elements take any count; split and mix stop at 4096 frames.
class Limiter2 {
public:
    Limiter1 limiters[2]; // left or mid, right or side
    float samplerate = 48000.0F;
    MidSideSplitter splitter;

    Limiter2() { setSamplerate(48000.0F); }

    void setSamplerate(float s) {
        samplerate = s;
        reset();
    }

    /// Recomputes the coefficients; the running gains stay.
    void reset() {
        limiters[0].reset();
        limiters[1].reset();
        splitter.reset();
    }

    void processBuffers(float* left, float* right, int count) QOR_NONBLOCKING {
        limiters[0].processBuffer(left, count);
        limiters[1].processBuffer(right, count);
    }

    /// The second pass reads what the first has left in `left`.
    void processBuffersLinked(float* left, float* right, int count) QOR_NONBLOCKING {
        limiters[0].processBuffersLinked(left, right, count);
        limiters[1].processBuffersLinked(right, left, count);
    }

    void processBuffersMidSide(float* left, float* right, int count) QOR_NONBLOCKING {
        splitter.split(left, right, count);
        limiters[0].processBuffer(splitter.getMid(), count);
        limiters[1].processBuffer(splitter.getSide(), count);
        splitter.mix(left, right, count);
    }

    /// Both elements work on mid, one behind the other; side comes back unchanged.
    void processBuffersMidSideLinked(float* left, float* right, int count) QOR_NONBLOCKING {
        splitter.split(left, right, count);
        limiters[0].processBuffer(splitter.getMid(), count);
        limiters[1].processBuffer(splitter.getMid(), count);
        splitter.mix(left, right, count);
    }

    void processBuffersSidechain(float* left, float* right, const float* sideLeft, const float* sideRight,
                                 int count) QOR_NONBLOCKING {
        limiters[0].processBufferSidechain(left, sideLeft, count);
        limiters[1].processBufferSidechain(right, sideRight, count);
    }

    void processBuffersSidechainLinked(float* left, float* right, const float* sideLeft,
                                       const float* sideRight, int count) QOR_NONBLOCKING {
        limiters[0].processBuffersSidechainLinked(left, right, sideLeft, sideRight, count);
        limiters[1].processBuffersSidechainLinked(right, left, sideRight, sideLeft, count);
    }

    void processBuffersSidechainMidSide(float* left, float* right, const float* sideMid,
                                        const float* sideSide, int count) QOR_NONBLOCKING {
        splitter.split(left, right, count);
        limiters[0].processBufferSidechain(splitter.getMid(), sideMid, count);
        limiters[1].processBufferSidechain(splitter.getSide(), sideSide, count);
        splitter.mix(left, right, count);
    }

    /// Both elements are driven by the side-chain's mid; the second still works on side for its dry share.
    void processBuffersSidechainMidSideLinked(float* left, float* right, const float* sideMid,
                                              const float* /*sideSide*/, int count) QOR_NONBLOCKING {
        splitter.split(left, right, count);
        limiters[0].processBufferSidechain(splitter.getMid(), sideMid, count);
        limiters[1].processBufferSidechain(splitter.getSide(), sideMid, count);
        splitter.mix(left, right, count);
    }
};

} // namespace qor
