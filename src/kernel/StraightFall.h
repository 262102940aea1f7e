// Many equal falls of a meter at once.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace qor {

/// A value from which one step is taken off again and again, each difference rounded. Between two powers of
/// two doubles lie evenly, so that the rounding is the same each time: what really goes off is one number,
/// and n times that number is what n steps take off, bit for bit. Render thread; nothing allocates.
class StraightFall {
public:
    /// A power of two, which makes the product exact.
    static constexpr int kSteps = 8;

    explicit StraightFall(double step) : step_(step) {}

    /// What is left of `value` after `kSteps` steps; 0.0 if they reach the next power of two or cannot be
    /// told at once.
    double after(double value) {
        if (!(value >= low_ && value < high_)) {
            workOut(value);
        }
        const double end = value - (kSteps * drop_);
        return end > low_ ? end : 0.0;
    }

    /// True if the magnitudes of `kSteps` samples lie below a limit that is not negative. They compare as
    /// their bits do, with NaN above all; and no float lies between the limit and its rounding, so that a
    /// sample below the one is below the other.
    static bool allBelow(const float* samples, double limit) {
        const auto limitBits = std::bit_cast<std::int32_t>(static_cast<float>(limit));
        std::int32_t differences = -1;
#pragma GCC unroll 1 // unrolled it would not be vectorised
        for (int i = 0; i < kSteps; ++i) {
            differences &= (std::bit_cast<std::int32_t>(samples[i]) & 0x7FFFFFFF) - limitBits;
        }
        return differences < 0;
    }

private:
    void workOut(double value) {
        constexpr std::uint64_t kExponent = 0x7FF0000000000000U;
        low_ = std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) & kExponent);
        high_ = 2.0 * low_;
        const double middle = 1.5 * low_;
        drop_ = middle - (middle - step_);
        const bool staysAbove = step_ >= 0.0 && step_ < 0.5 * low_;
        // A step half way between two places goes to the even one, and that is not the same each time.
        const bool roundsOneWay = std::fabs(step_ - drop_) < low_ * 0x1p-53;
        if (!staysAbove || !roundsOneWay) {
            drop_ = std::numeric_limits<double>::infinity();
        }
    }

    double step_;
    double low_ = 0.0; // `drop_` holds from this power of two up to the next
    double high_ = 0.0;
    double drop_ = 0.0;
};

} // namespace qor
