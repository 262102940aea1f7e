// A wave-table oscillator's settings, with the tables that all instances share.
#pragma once

#include "AUDIO/SOURCES/VAOscillators/NoiseOscillator.h"
#include "platform/core/Saturate.h"

#include <cmath>
#include <cstdint>

namespace qor {

/// Stores what an oscillator is set to; nothing here renders. The first instance builds the shared tables
/// without a lock: two instances must not be constructed on different threads at once.
class Modulator {
public:
    static constexpr int kTableSize = 4096;

    // Shared by the process. The tables are built when an instance starts while `count` is 0.
    inline static std::uint64_t count = 0;
    inline static float maxFrequency = 22050.0F; // hertz
    inline static float freqTable[128];          // hertz of each MIDI note
    inline static float freqFactors[128];        // ratio to note 60
    inline static float waveSine[kTableSize];
    inline static float waveSaw[kTableSize];
    inline static float waveSineSquar[kTableSize];
    inline static float waveSineQuad[kTableSize];
    inline static float waveRampLinDown[kTableSize];
    inline static float waveRampLinUp[kTableSize];
    inline static float waveRampExponDown[kTableSize];
    inline static float waveRampExponUp[kTableSize];
    inline static float wave100[kTableSize]; // hertz
    inline static float waveRampLogUp[kTableSize];
    inline static float waveRampLogDown[kTableSize];

    std::uint64_t word1 = 0;
    std::uint64_t word2 = 0;
    std::uint64_t word3 = 0;
    NoiseOscillator noise;
    std::uint8_t flag = 0;
    std::int32_t mode = 9;
    float samplerate = 48000.0F; // hertz
    float frequency = 1.0F;      // hertz
    float gain = 1.0F;
    float shape = 1.0F;
    float lastValue = 0.0F;
    float phaseScale = 0.0F;       // phase units per hertz and sample
    std::uint64_t tableShift = 12; // from a 24-bit phase to a table index
    std::int64_t phase = 0;        // 16777216 is one cycle
    std::uint64_t word4 = 0;
    std::uint32_t word5 = 0;
    std::int32_t numCycles = 0;
    const float* table1 = nullptr;
    const float* table2 = nullptr;

    Modulator();
    ~Modulator();
    Modulator(const Modulator&) = delete;
    Modulator& operator=(const Modulator&) = delete;

    void init();
    /// Hertz; exactly 0.0 is ignored.
    void setSamplerate(float s);
    void setMode(int value) { mode = value; }
    int getMode() const { return mode; }
    void setNumCycles(int value) { numCycles = value; }
    int getNumCycles() const { return numCycles; }
    /// In cycles; below 0.0 becomes 0.0.
    void setPhase(float p);
    float getPhase() const;
    /// Hertz, kept from 0.0 to one hertz below the sample rate.
    void setFrequency(float f);
    float getFrequency() const { return frequency; }
    /// Limited to -1.0 to 1.0.
    void setGain(float value);
    float getGain() const { return gain; }
    /// Limited to 0.0 to 1.0.
    void setShape(float value);
    float getShape() const { return shape; }
    void retrigger();
    /// 0 to 64 selects the stored sine and a stored partner, anything else the computed sine twice.
    void setTable(int index);
    void setTables(const float* first, const float* second, int size);

    /// The logarithmic ramp read at |x|, without interpolation, with the sign of x; 1.0 from |x| = 1.0 on.
    static float getValueFrequencyScaled(float x) {
        const auto i = platform::saturatingCast<std::int32_t>(std::fabs(x) * 4096.0F);
        const float r = i < 0 ? 0.0F : (i >= kTableSize ? 1.0F : waveRampLogUp[i]);
        return x < 0.0F ? -r : r;
    }

private:
    static void buildTables();
};

} // namespace qor
