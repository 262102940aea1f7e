// A second, plain form of the signal path, for comparison bit by bit: one sample at a time, every operation
// written out, nothing shared with the shipped classes. It is built without optimisation.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace model {

constexpr int kFrames = 4096;

struct Element {
    float input = 0.5F, attack = 0.1F, release = 0.66F, threshold = 0.9F, trim = 0.6F, knee = 1.0F,
          mix = 1.0F, audition = 0.0F;
    float thresholdCoefficient = 0.0F, attackCoefficient = 0.0F, releaseCoefficient = 0.0F,
          trimCoefficient = 0.0F;
    float gainTarget = 0.0F, gain = 1.0F, inputGain = 1.0F;

    void deriveThreshold();
    void deriveTrim();
    void deriveAttack();
    void deriveRelease();
    void reset();
    void sample(float* place, const float* sidechain);
    void sampleLinked(float* place, const float* other);
    float compression() const;

private:
    void limit(float* place, float in, float source);
};

struct Meter {
    float samplerate = 48000.0F, attack = 0.01F, release = 1.0F, decay = 0.001F, attackSamples = 480.0F,
          releaseSamples = 48000.0F;
    std::int32_t holdCounter = 48;
    double attackStep = 0.0, releaseStep = 0.0, value = 0.0;

    Meter() { rate(48000.0F); }
    void rate(float s);
    void sample(float x);
    float peak() const;
};

struct Filter {
    float poles = 3.0F, cutoff = 0.5F, resonance = 0.0F, lastCutoff = 0.0F, lastResonance = 0.0F;
    float outputGain = 0.0F, frequency = 0.0F, damping = 0.0F;
    float band[4] = {}, low[4] = {};

    Filter() { reset(); }
    void reset();
    void setCutoff(float c);
    float high(float s);
    float lowPass(float s);

private:
    void stages(float s, float& h, float& l);
};

struct Kernel {
    int channelCount = 2;
    float samplerate = 48000.0F;
    std::array<float, 15> slots{};
    Meter meters[2];
    float cutoff1 = 0.33F, cutoff2 = 0.66F;
    Filter lowFilters[2], highFilters[2];
    std::array<std::array<float, kFrames>, 2> lowPart{}, highPart{}, bandPart{}; // left, right
    std::array<std::array<float, kFrames>, 2> sidechainMidSide{}, midSide{};     // mid, side
    Element elements[2];
    bool bypassed = false;

    Kernel();
    void init(int channels, double rate);
    void setSamplerate(float s);
    void reset();
    void setParameter(std::uint64_t address, float value);
    float getParameter(std::uint64_t address) const;
    /// `in` and `out` are channel buffers; processes from `offset`.
    void process(const std::vector<float*>& in, const std::vector<float*>& out, unsigned count,
                 unsigned offset);

private:
    void setCutoff1(float c);
    void setCutoff2(float c);
    void split(const float* left, const float* right, int count);
    void limit(float* left, float* right, int count);
    void limitFiltered(int mode, float* left, float* right, int count);
};

struct Event {
    std::int64_t time;
    int type; // 1 parameter, 2 ramp, 8 and 9 MIDI, others nothing
    std::uint64_t address;
    float value;
};

/// One render call with its events in list order.
void render(Kernel& kernel, double sampleTime, unsigned frameCount, const std::vector<Event>& events,
            const std::vector<float*>& in, const std::vector<float*>& out);

/// The logarithmic ramp's reading that maps a cutoff.
float rampLogUp(float x);

} // namespace model
