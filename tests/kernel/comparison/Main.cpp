// The comparison on its own, for builds with other compilers and options: exit status 1 at the first
// difference.
#include "kernel/comparison/Comparison.h"
#include "platform/core/Log.h"

#include <cstdio>

int main() {
    platform::setLogSink(platform::discardingSink());
    constexpr std::uint32_t kLives = 400;
    for (std::uint32_t seed = 1; seed <= kLives; ++seed) {
        const std::string difference = comparison::compareLife(seed);
        if (!difference.empty()) {
            std::printf("%s\n", difference.c_str());
            return 1;
        }
    }
    std::printf("%u lives agree bit for bit\n", kLives);
    return 0;
}
