#include "AUDIO/SOURCES/VAOscillators/Modulator.h"

#include "AUDIO/SOURCES/VAOscillators/WaveTables.h"
#include "platform/core/MathCalls.h"

namespace qor {

using platform::libraryPower;
using platform::librarySine;
using platform::saturatingCast;

namespace {

constexpr float kCycle = 16777216.0F; // phase units
constexpr std::uint32_t kCycleBit = 1U << 24;

float limited(float value, float low, float high) {
    return value < low ? low : (value > high ? high : value);
}

// The doublings that bring a size to one cycle. A size that never gets there ends at zero bits left.
std::uint64_t shiftForSize(int size) {
    std::uint64_t shift = 0;
    for (auto bits = static_cast<std::uint32_t>(size); bits != 0 && (bits & kCycleBit) == 0; bits <<= 1) {
        ++shift;
    }
    return shift;
}

} // namespace

Modulator::Modulator() {
    setSamplerate(48000.0F);
    init();
}

Modulator::~Modulator() {
    --count;
}

void Modulator::init() {
    const std::uint64_t instancesBefore = count;
    ++count;
    if (instancesBefore == 0) {
        buildTables();
    }
    tableShift = shiftForSize(kTableSize);
    setMode(1);
    setPhase(0.0F);
    setFrequency(1.0F);
    setGain(0.5F);
    retrigger();
    setTable(65);
}

void Modulator::setSamplerate(float s) {
    if (s == 0.0F) {
        return;
    }
    samplerate = s;
    phaseScale = kCycle / samplerate;
}

void Modulator::setPhase(float p) {
    phase = p < 0.0F ? 0 : saturatingCast<std::int32_t>(kCycle * p);
}

float Modulator::getPhase() const {
    return static_cast<float>(phase) / kCycle;
}

void Modulator::setFrequency(float f) {
    frequency = f;
    if (frequency < 0.0F) {
        frequency = 0.0F;
    } else if (frequency >= samplerate) {
        frequency = samplerate - 1.0F;
    }
}

void Modulator::setGain(float value) {
    gain = limited(value, -1.0F, 1.0F);
}

void Modulator::setShape(float value) {
    shape = limited(value, 0.0F, 1.0F);
}

void Modulator::retrigger() {
    setPhase(0.0F);
    word4 = 0;
    word5 = 0;
    lastValue = 0.0F;
}

void Modulator::setTable(int index) {
    if (index < 0 || index > 64) {
        setTables(waveSine, waveSine, kTableSize);
        return;
    }
    setTables(table_sine, kStoredWaves[index + 1], kTableSize);
}

void Modulator::setTables(const float* first, const float* second, int size) {
    table1 = first;
    table2 = second;
    tableShift = shiftForSize(size);
}

void Modulator::buildTables() {
    constexpr double kSemitone = 1.059463094359;
    double note = 6.875;
    for (int step = 0; step < 3; ++step) {
        note *= kSemitone;
    }
    for (float& entry : freqTable) {
        entry = static_cast<float>(note);
        note *= kSemitone;
    }
    for (int i = 0; i < 128; ++i) {
        freqFactors[i] = freqTable[i] / freqTable[60];
    }

    maxFrequency = 440.0F * libraryPower(2.0F, 5.0F);
    for (int i = 0; i < kTableSize; ++i) {
        const float t = 0.000244140625F * static_cast<float>(i);
        const float s = librarySine(6.2831855F * t);
        waveSine[i] = (s + 1.0F) * 0.5F;
        waveSaw[i] = 1.0F - t;
        // The second half lies at -1.0 to -0.5: nothing falls between the halves.
        const float q = std::sqrt(std::sqrt(std::sqrt(std::fabs(s))));
        const float magnitude = (q + 1.0F) * 0.5F;
        waveSineSquar[i] = i < kTableSize / 2 ? magnitude : -magnitude;
        waveSineQuad[i] = (((s * s) * s) + 1.0F) * 0.5F;
        waveRampLinUp[i] = t;
        waveRampLinDown[i] = 1.0F - t;
        waveRampExponUp[i] = (t * t) * t;
        wave100[i] = 440.0F * libraryPower(2.0F, (t * 10.0F) - 5.0F);
        waveRampLogUp[i] = (wave100[i] / maxFrequency) * t;
    }
    for (int i = 0; i < kTableSize; ++i) {
        waveRampExponDown[i] = waveRampExponUp[kTableSize - 1 - i];
        waveRampLogDown[i] = waveRampLogUp[kTableSize - 1 - i];
    }
}

} // namespace qor
