// A state-variable filter: up to four copies of one stage, side by side.
#pragma once

#include "AUDIO/SOURCES/VAOscillators/Modulator.h"
#include "kernel/Interpolator2.h"

#include <bit>
#include <cstdint>

namespace qor {

/// The state of one stage, and its recurrence.
struct SVStage {
    float band;
    float low;

    struct Outputs {
        float high;
        float low;
    };

    Outputs run(float sample, float frequency, float damping) {
        const float l = low + (frequency * band);
        const float h = ((0.5F * sample) - l) - (damping * band);
        band = (frequency * h) + band;
        low = l;
        return {h, l};
    }

    bool sameBits(const SVStage& other) const {
        return std::bit_cast<std::uint64_t>(*this) == std::bit_cast<std::uint64_t>(other);
    }
};

/// Edges are normalised and the coefficients know nothing of the sample rate. All stages run from the same
/// input with the same coefficients: from a clean state they hold identical values.
class SVFilter4Pole1 {
public:
    float poles = 3.0F; // stages to run: the second above 1.0, the third above 2.0, the fourth above 3.0
    float spare = 0.0F;
    float samplerate = 48000.0F; // hertz; stored only
    float cutoff = 0.5F;
    float resonance = 0.0F;
    float lastCutoff = 0.0F; // what the coefficients were last computed from
    float lastResonance = 0.0F;
    float outputGain = 0.0F;
    float frequency = 0.0F;
    float damping = 0.0F;
    float band1 = 0.0F;
    float low1 = 0.0F;
    float band2 = 0.0F;
    float low2 = 0.0F;
    float band3 = 0.0F;
    float low3 = 0.0F;
    float band4 = 0.0F;
    float low4 = 0.0F;
    Interpolator2 smoother;
    Modulator modulator; // builds the shared tables that `processParameters` reads

    SVFilter4Pole1() { init(); }

    void init() {
        clear();
        reset();
    }

    /// Back to the middle cutoff, whatever was set.
    void reset() {
        clear();
        spare = 0.0F;
        cutoff = 0.5F;
        resonance = 0.0F;
        processParameters();
    }

    void setSamplerate(float s) { samplerate = s; }

    void setCutoff(float c) {
        cutoff = c;
        processParameters();
    }

    void processParameters() {
        float f = Modulator::getValueFrequencyScaled(cutoff);
        if (static_cast<double>(f) < 0.0012) {
            f = 0.0012F;
        } else if (f > 1.0F) {
            f = 1.0F;
        }
        float r = resonance < 0.0F ? 0.0F : (resonance > 1.0F ? 1.0F : resonance);
        if (lastCutoff == f && lastResonance == r) {
            return;
        }
        lastCutoff = f;
        lastResonance = r;
        r = r * r;
        r = r + 0.05F;
        outputGain = 0.7F + (1.0F - r);
        const float p = 1.0F + (1.0F - f);
        r = r * p;
        const float u = r * 25.0F;
        frequency = f;
        damping = 1.0F / u;
    }

    void processSampleHP(float* sample) { *sample = runStages(*sample).high * outputGain; }
    void processSampleLP(float* sample) { *sample = runStages(*sample).low * outputGain; }

    /// `out` gets the filtered sample, `rest` what is left of `in`, read anew: `rest` may be the same place.
    void processSampleHP(const float* in, float* out, float* rest) {
        float t = *in;
        processSampleHP(&t);
        *out = t;
        *rest = *in - t;
    }
    void processSampleLP(const float* in, float* out, float* rest) {
        float t = *in;
        processSampleLP(&t);
        *out = t;
        *rest = *in - t;
    }

    void processBufferHP(const float* in, float* out, float* rest, int count) {
        for (int i = 0; i < count; ++i) {
            processSampleHP(&in[i], &out[i], &rest[i]);
        }
    }
    void processBufferLP(const float* in, float* out, float* rest, int count) {
        for (int i = 0; i < count; ++i) {
            processSampleLP(&in[i], &out[i], &rest[i]);
        }
    }

    /// True if the stages in use hold the same bits: one of them then stands for all.
    bool stagesAgree() const {
        const SVStage first{band1, low1};
        return (!(poles > 1.0F) || first.sameBits({band2, low2})) &&
               (!(poles > 2.0F) || first.sameBits({band3, low3})) &&
               (!(poles > 3.0F) || first.sameBits({band4, low4}));
    }
    SVStage firstStage() const { return {band1, low1}; }
    /// Gives all stages in use one state.
    void setStages(const SVStage& stage) {
        band1 = stage.band;
        low1 = stage.low;
        if (poles > 1.0F) {
            band2 = stage.band;
            low2 = stage.low;
        }
        if (poles > 2.0F) {
            band3 = stage.band;
            low3 = stage.low;
        }
        if (poles > 3.0F) {
            band4 = stage.band;
            low4 = stage.low;
        }
    }

private:
    void clear() {
        lastCutoff = 0.0F;
        lastResonance = 0.0F;
        outputGain = 0.0F;
        frequency = 0.0F;
        damping = 0.0F;
        setState({0.0F, 0.0F}, band1, low1);
        setState({0.0F, 0.0F}, band2, low2);
        setState({0.0F, 0.0F}, band3, low3);
        setState({0.0F, 0.0F}, band4, low4);
    }

    static void setState(const SVStage& stage, float& band, float& low) {
        band = stage.band;
        low = stage.low;
    }

    SVStage::Outputs runStage(float sample, float& band, float& low) const {
        SVStage stage{band, low};
        const SVStage::Outputs outputs = stage.run(sample, frequency, damping);
        setState(stage, band, low);
        return outputs;
    }

    // The outputs of the last stage in use.
    SVStage::Outputs runStages(float sample) {
        SVStage::Outputs outputs = runStage(sample, band1, low1);
        if (poles > 1.0F) {
            outputs = runStage(sample, band2, low2);
        }
        if (poles > 2.0F) {
            outputs = runStage(sample, band3, low3);
        }
        if (poles > 3.0F) {
            outputs = runStage(sample, band4, low4);
        }
        return outputs;
    }
};

} // namespace qor
