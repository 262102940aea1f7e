#include "AUDIO/SOURCES/VAOscillators/WaveTables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <iterator>
#include <numbers>
#include <vector>

namespace {

constexpr int kPlaces = 4096;
constexpr double kTurn = 2.0 * std::numbers::pi;

/// The amplitude of one harmonic.
double harmonicOf(const float* wave, int harmonic) {
    std::complex<double> sum;
    for (int i = 0; i < kPlaces; ++i) {
        sum += static_cast<double>(wave[i]) * std::polar(1.0, -kTurn * harmonic * i / kPlaces);
    }
    return 2.0 * std::abs(sum) / kPlaces;
}

TEST(WaveTables, ThereAre66InOrder) {
    static_assert(std::size(qor::kStoredWaves) == 66);
    EXPECT_EQ(qor::kStoredWaves[0], qor::table_sine);
    EXPECT_EQ(qor::kStoredWaves[1], qor::table_tri);
    EXPECT_EQ(qor::kStoredWaves[2], qor::table_saw);
    EXPECT_EQ(qor::kStoredWaves[3], qor::table_sqr);
    EXPECT_EQ(qor::kStoredWaves[4], qor::table_03);
    EXPECT_EQ(qor::kStoredWaves[11], qor::table_10);
    EXPECT_EQ(qor::kStoredWaves[65], qor::table_64);
}

TEST(WaveTables, EachHasAPeakOfOneAndAMeanOfZero) {
    for (const float* wave : qor::kStoredWaves) {
        double sum = 0.0;
        float peak = 0.0F;
        for (int i = 0; i < kPlaces; ++i) {
            sum += wave[i];
            peak = std::max(peak, std::fabs(wave[i]));
        }
        EXPECT_NEAR(peak, 1.0F, 1e-6F);
        EXPECT_NEAR(sum / kPlaces, 0.0, 1e-6);
    }
}

TEST(WaveTables, TheSineStartsBehindItsZeroCrossing) {
    EXPECT_NEAR(qor::table_sine[0], 0.0105F, 1e-6F);
    for (int i = 0; i < kPlaces; ++i) {
        EXPECT_NEAR(qor::table_sine[i], std::sin(kTurn * i / kPlaces), 0.0132);
    }
}

TEST(WaveTables, TheFirstFourHaveTheirShapesSpectra) {
    EXPECT_NEAR(harmonicOf(qor::table_sine, 2), 0.0, 1e-6);
    EXPECT_NEAR(harmonicOf(qor::table_tri, 3) / harmonicOf(qor::table_tri, 1), 1.0 / 9.0, 1e-5);
    EXPECT_NEAR(harmonicOf(qor::table_tri, 2), 0.0, 1e-6);
    EXPECT_NEAR(harmonicOf(qor::table_saw, 2) / harmonicOf(qor::table_saw, 1), 0.5, 0.01);
    EXPECT_NEAR(harmonicOf(qor::table_sqr, 3) / harmonicOf(qor::table_sqr, 1), 1.0 / 3.0, 0.01);
    EXPECT_NEAR(harmonicOf(qor::table_sqr, 2), 0.0, 1e-6);
}

TEST(WaveTables, NoneHasContentNearTheTablesOwnLimit) {
    for (const float* wave : qor::kStoredWaves) {
        for (const int harmonic : {200, 512, 1024, 2000}) {
            EXPECT_NEAR(harmonicOf(wave, harmonic), 0.0, 1e-6);
        }
    }
}

TEST(WaveTables, NoTwoSpectraAreAlike) {
    std::vector<std::vector<double>> spectra;
    for (const float* wave : qor::kStoredWaves) {
        std::vector<double> spectrum;
        for (int harmonic = 1; harmonic <= 16; ++harmonic) {
            spectrum.push_back(harmonicOf(wave, harmonic));
        }
        for (const std::vector<double>& other : spectra) {
            double distance = 0.0;
            for (std::size_t k = 0; k < spectrum.size(); ++k) {
                distance = std::max(distance, std::fabs(spectrum[k] - other[k]));
            }
            EXPECT_GT(distance, 0.001) << "waves " << spectra.size() << " and " << &other - spectra.data();
        }
        spectra.push_back(spectrum);
    }
}

} // namespace
