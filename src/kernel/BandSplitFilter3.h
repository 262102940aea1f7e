// Cuts a stereo signal into low, band and high parts at two edges; the band is made by subtraction.
#pragma once

#include "kernel/FrameLimit.h"
#include "kernel/SVFilter4Pole1.h"
#include "platform/core/RealTime.h"

#include <algorithm>
#include <functional>

namespace qor {

/// The limiter's input filter. Its buffers are members; nothing allocates.
class BandSplitFilter3 {
public:
    float scale1 = 1.0F; // the scales are stored only
    float scale2 = 1.0F;
    float scale3 = 1.0F;
    float samplerate = 48000.0F; // hertz
    float cutoff1 = 0.33F;       // lower edge, normalised; never above `cutoff2`
    float cutoff2 = 0.66F;       // upper edge, normalised; never below `cutoff1`
    float lowLeft[kFrameLimit];
    float lowRight[kFrameLimit];
    float highLeft[kFrameLimit];
    float highRight[kFrameLimit];
    float bandLeft[kFrameLimit];
    float bandRight[kFrameLimit];
    SVFilter4Pole1 lowFilters[2];
    SVFilter4Pole1 highFilters[2];

    BandSplitFilter3() {
        setSamplerate(48000.0F);
        reset();
        setCutoff1(0.333F);
        setCutoff2(0.666F);
    }

    void setSamplerate(float s) {
        samplerate = s;
        highFilters[0].setSamplerate(s);
        highFilters[1].setSamplerate(s);
        lowFilters[0].setSamplerate(s);
        lowFilters[1].setSamplerate(s);
    }

    /// Leaves each filter at its own default cutoff: the owner sets the edges again.
    void reset() { init(); }

    void init() {
        clear();
        highFilters[0].reset();
        highFilters[1].reset();
        lowFilters[0].reset();
        lowFilters[1].reset();
    }

    void clear() {
        for (float* buffer : {lowLeft, lowRight, highLeft, highRight, bandLeft, bandRight}) {
            std::fill_n(buffer, kFrameLimit, 0.0F);
        }
    }

    /// Ignored outside 0.0 to 1.0; otherwise held at or below the upper edge.
    void setCutoff1(float c) {
        if (c < 0.0F || c > 1.0F) {
            return;
        }
        cutoff1 = c;
        if (cutoff1 > cutoff2) {
            cutoff1 = cutoff2;
        }
        lowFilters[0].setCutoff(cutoff1);
        lowFilters[1].setCutoff(cutoff1);
    }

    /// Ignored outside 0.0 to 1.0; otherwise held at or above the lower edge.
    void setCutoff2(float c) {
        if (c < 0.0F || c > 1.0F) {
            return;
        }
        cutoff2 = c;
        if (cutoff2 < cutoff1) {
            cutoff2 = cutoff1;
        }
        highFilters[0].setCutoff(cutoff2);
        highFilters[1].setCutoff(cutoff2);
    }

    /// `left` and `right` are only read; only the first 4096 frames of a longer call.
    void split(const float* left, const float* right, int count) QOR_NONBLOCKING {
        count = std::min(count, kFrameLimit);
        if (mayOverlapPasses(left, count) && mayOverlapPasses(right, count) && allStagesAgree()) {
            splitAtOnce(left, right, count);
        } else {
            splitInPasses(left, right, count);
        }
    }

    float* getBPLeft() { return bandLeft; }
    float* getBPRight() { return bandRight; }

private:
    void splitInPasses(const float* left, const float* right, int count) {
        highFilters[0].processBufferHP(left, highLeft, bandLeft, count);
        highFilters[1].processBufferHP(right, highRight, bandRight, count);
        lowFilters[0].processBufferLP(bandLeft, lowLeft, bandLeft, count);
        lowFilters[1].processBufferLP(bandRight, lowRight, bandRight, count);
    }

    // The four passes in one loop and one stage for all: their recurrences run side by side, which hides the
    // latency that bounds each of them. Bits and final states are those of the passes.
    void splitAtOnce(const float* left, const float* right, int count) {
        Channel first(highFilters[0], lowFilters[0]);
        Channel second(highFilters[1], lowFilters[1]);
        for (int i = 0; i < count; ++i) {
            first.run(left[i], highLeft[i], lowLeft[i], bandLeft[i]);
            second.run(right[i], highRight[i], lowRight[i], bandRight[i]);
        }
        first.store(highFilters[0], lowFilters[0]);
        second.store(highFilters[1], lowFilters[1]);
    }

    struct Edge {
        explicit Edge(const SVFilter4Pole1& filter)
            : stage(filter.firstStage()), frequency(filter.frequency), damping(filter.damping),
              gain(filter.outputGain) {}

        SVStage stage;
        float frequency;
        float damping;
        float gain;
    };

    struct Channel {
        Channel(const SVFilter4Pole1& highFilter, const SVFilter4Pole1& lowFilter)
            : upper(highFilter), lower(lowFilter) {}

        void run(float in, float& high, float& low, float& band) {
            const float h = upper.stage.run(in, upper.frequency, upper.damping).high * upper.gain;
            const float below = in - h;
            const float l = lower.stage.run(below, lower.frequency, lower.damping).low * lower.gain;
            high = h;
            low = l;
            band = below - l;
        }

        void store(SVFilter4Pole1& highFilter, SVFilter4Pole1& lowFilter) const {
            highFilter.setStages(upper.stage);
            lowFilter.setStages(lower.stage);
        }

        Edge upper;
        Edge lower;
    };

    bool allStagesAgree() const {
        return highFilters[0].stagesAgree() && highFilters[1].stagesAgree() && lowFilters[0].stagesAgree() &&
               lowFilters[1].stagesAgree();
    }

    // False for an input that lies in this object: the order of the passes shows in it.
    bool mayOverlapPasses(const float* input, int count) const {
        const auto endsBefore = [](const void* a, const void* b) { return std::less_equal<>()(a, b); };
        return endsBefore(this + 1, input) || endsBefore(input + std::max(count, 0), this);
    }
};

} // namespace qor
