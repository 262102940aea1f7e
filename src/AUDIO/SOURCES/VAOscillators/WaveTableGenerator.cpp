// Writes the stored waves as a C++ source: build-time program, usage `generator OUTPUT.cpp`.
// Each wave is a sum of sine partials over one cycle of 4096 places, scaled to a peak of 1.0. No partial has
// frequency zero, so that every mean is zero up to rounding.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <functional>
#include <iostream>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr int kPlaces = 4096;
constexpr int kHarmonics = 64;
constexpr double kPi = std::numbers::pi;

struct Partial {
    int harmonic;
    double amplitude;
    double phase = 0.0; // radians
};
using Spectrum = std::vector<Partial>;

Spectrum harmonics(int from, int step, const std::function<double(int)>& amplitude) {
    Spectrum spectrum;
    for (int k = from; k <= kHarmonics; k += step) {
        spectrum.push_back({k, amplitude(k)});
    }
    return spectrum;
}

// Sigma factors: they take the ringing off the corners of a cut-off series.
double smooth(int k) {
    const double x = kPi * k / (kHarmonics + 1);
    return std::sin(x) / x;
}

// The sine is taken a little behind its zero crossing, so that it starts at 0.0105.
Spectrum sine() {
    return {{1, 1.0, std::asin(0.0105)}};
}
Spectrum triangle() {
    return harmonics(1, 2, [](int k) { return (k % 4 == 1 ? 1.0 : -1.0) / (k * k); });
}
Spectrum saw() {
    return harmonics(1, 1, [](int k) { return smooth(k) / k; });
}
Spectrum square() {
    return harmonics(1, 2, [](int k) { return smooth(k) / k; });
}

// The families of the further waves; `step` from 0 to 7 moves along a family.

Spectrum darkening(int step) { // all harmonics, from bright to dull
    return harmonics(1, 1, [step](int k) { return smooth(k) * std::pow(k, -0.7 - 0.2 * step); });
}
Spectrum hollow(int step) { // odd harmonics, from bright to dull
    return harmonics(1, 2, [step](int k) { return smooth(k) * std::pow(k, -0.6 - 0.15 * step); });
}
Spectrum pulse(int step) { // a rectangle from narrow to nearly half a cycle
    const double width = 0.05 + 0.055 * step;
    return harmonics(1, 1, [width](int k) { return smooth(k) * std::sin(kPi * k * width) / k; });
}
Spectrum formant(int step) { // a fundamental and a hill of harmonics around a centre
    const double centre = 4.0 + 3.0 * step;
    return harmonics(1, 1, [centre](int k) {
        const double distance = (k - centre) / 2.5;
        return (k == 1 ? 0.6 : 0.0) + std::exp(-0.5 * distance * distance);
    });
}
Spectrum comb(int step) { // the fundamental and every n-th harmonic above it
    Spectrum spectrum{{1, 1.0}};
    for (int k = 1 + (step + 2); k <= kHarmonics; k += step + 2) {
        spectrum.push_back({k, 1.5 / k});
    }
    return spectrum;
}
Spectrum drawbars(int step) { // eight registrations of an organ's stops
    constexpr std::array<int, 8> kStops = {1, 2, 3, 4, 6, 8, 10, 16};
    constexpr std::array<std::array<int, 8>, 8> kLevels = {{{8, 8, 8, 0, 0, 0, 0, 0},
                                                            {8, 0, 8, 0, 4, 0, 2, 0},
                                                            {8, 8, 0, 8, 0, 8, 0, 6},
                                                            {6, 4, 8, 4, 8, 4, 0, 8},
                                                            {8, 0, 0, 0, 0, 8, 0, 8},
                                                            {4, 8, 4, 8, 4, 8, 4, 8},
                                                            {8, 6, 5, 4, 3, 2, 1, 1},
                                                            {1, 2, 3, 4, 5, 6, 7, 8}}};
    Spectrum spectrum;
    for (std::size_t stop = 0; stop < kStops.size(); ++stop) {
        const int level = kLevels[static_cast<std::size_t>(step)][stop];
        if (level != 0) {
            spectrum.push_back({kStops[stop], level / 8.0});
        }
    }
    return spectrum;
}
Spectrum chime(int step) { // few partials, far apart, as of struck metal
    constexpr std::array<int, 6> kFirst = {1, 3, 7, 12, 19, 28};
    Spectrum spectrum;
    for (std::size_t n = 0; n < kFirst.size(); ++n) {
        const int harmonic = kFirst[n] + static_cast<int>(n) * step;
        spectrum.push_back({harmonic, std::pow(0.75, static_cast<double>(n))});
    }
    return spectrum;
}
Spectrum reed(int step) { // a saw with its even harmonics held back and its phases bent, less and less
    const double even = 0.2 + 0.1 * step;
    Spectrum spectrum;
    for (int k = 1; k <= kHarmonics; ++k) {
        spectrum.push_back({k, (k % 2 == 0 ? even : 1.0) * smooth(k) / k, 0.02 * (8 - step) * k * k});
    }
    return spectrum;
}

Spectrum spectrumOf(int index) {
    constexpr std::array kFamilies = {darkening, hollow, pulse, formant, comb, drawbars, chime, reed};
    switch (index) {
    case -1:
        return sine();
    case 0:
        return triangle();
    case 1:
        return saw();
    case 2:
        return square();
    default:
        return kFamilies[static_cast<std::size_t>((index - 3) / 8)]((index - 3) % 8);
    }
}

std::string nameOf(int index) {
    switch (index) {
    case -1:
        return "table_sine";
    case 0:
        return "table_tri";
    case 1:
        return "table_saw";
    case 2:
        return "table_sqr";
    default:
        return (index < 10 ? "table_0" : "table_") + std::to_string(index);
    }
}

std::vector<double> cycleOf(const Spectrum& spectrum) {
    std::vector<double> wave(kPlaces, 0.0);
    double peak = 0.0;
    for (int i = 0; i < kPlaces; ++i) {
        double& place = wave[static_cast<std::size_t>(i)];
        for (const Partial& partial : spectrum) {
            place += partial.amplitude * std::sin(2.0 * kPi * partial.harmonic * i / kPlaces + partial.phase);
        }
        peak = std::max(peak, std::abs(place));
    }
    for (double& place : wave) {
        place /= peak;
    }
    return wave;
}

void appendNumber(std::string& text, float value) {
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::scientific).ptr;
    text.append(digits.data(), end);
    text += "F,";
}

std::string sourceText() {
    std::string text = "// Generated; see WaveTableGenerator.cpp.\n"
                       "#include \"AUDIO/SOURCES/VAOscillators/WaveTables.h\"\n\nnamespace qor {\n";
    for (int index = -1; index <= 64; ++index) {
        text += "\nconst float " + nameOf(index) + "[4096] = {";
        const std::vector<double> wave = cycleOf(spectrumOf(index));
        for (int i = 0; i < kPlaces; ++i) {
            if (i % 8 == 0) {
                text += "\n";
            }
            appendNumber(text, static_cast<float>(wave[static_cast<std::size_t>(i)]));
        }
        text += "\n};\n";
    }
    text += "\nconst float* const kStoredWaves[66] = {\n";
    for (int index = -1; index <= 64; ++index) {
        text += "    " + nameOf(index) + ",\n";
    }
    return text + "};\n\n} // namespace qor\n";
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " OUTPUT.cpp\n";
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    file << sourceText();
    file.close();
    if (!file) {
        std::cerr << argv[1] << ": cannot be written\n";
        return 1;
    }
    return 0;
}
