// Repeatable random choices for the comparison with the model.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace comparison {

class Random {
public:
    explicit Random(std::uint32_t seed) : state_(seed * 2654435761U + 1U) {}

    std::uint32_t next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return state_;
    }
    /// 0 to `end` - 1.
    int below(int end) { return static_cast<int>(next() % static_cast<std::uint32_t>(end)); }
    bool oneIn(int n) { return below(n) == 0; }
    /// 0.0 to 1.0.
    float unit() { return static_cast<float>(next() >> 8) * 0x1p-24F; }
    float bipolar() { return 2.0F * unit() - 1.0F; }

    template <class T>
    T oneOf(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

    /// Values that arithmetic stumbles over.
    float odd() {
        using Limits = std::numeric_limits<float>;
        return oneOf<float>({Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(),
                             -Limits::max(), Limits::min(), Limits::denorm_min(), -Limits::denorm_min(),
                             1e-40F, 0.0F, -0.0F, 1e10F, -1e10F, 0.5F, -1.0F, 2.0F, 3e-5F});
    }

    /// One channel's worth of one kind of signal.
    void fill(float* samples, int count) {
        const int kind = below(10);
        const float level = oneOf<float>({1.0F, 0.1F, 4.0F, 0.001F, 1000.0F});
        for (int i = 0; i < count; ++i) {
            switch (kind) {
            case 0:
                samples[i] = 0.0F;
                break;
            case 1:
                samples[i] = (i / 50) % 2 == 0 ? level : -level;
                break;
            case 2:
                samples[i] = level;
                break;
            case 3: // subnormal
                samples[i] = bipolar() * 1e-38F;
                break;
            case 4: // fading into the subnormals
                samples[i] = bipolar() * std::exp2(-0.2F * static_cast<float>(i));
                break;
            case 5:
                samples[i] = oneIn(200) ? odd() : level * bipolar();
                break;
            case 6:
                samples[i] = odd();
                break;
            default:
                samples[i] = level * bipolar();
                break;
            }
        }
    }

private:
    std::uint32_t state_;
};

} // namespace comparison
