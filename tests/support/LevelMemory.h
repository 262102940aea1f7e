// Whether work that is done over and over leaves the heap as large as it was.
#pragma once

#include <gtest/gtest.h>

#include <malloc.h>
#include <string>

namespace test {

/// Does the work in rounds, at least `least` of them, until two have let the heap grow by less than `allowed`
/// bytes. What leaks grows in every round; what the display's libraries keep once, or until a queue has seen
/// its longest, at a time of their own, in some. Fails after `most` rounds, with the growth of each.
template <class Round>
::testing::AssertionResult staysLevel(std::size_t allowed, const Round& round, int least = 4, int most = 16) {
    std::string growths;
    int level = 0;
    for (int i = 0; i < most && (i < least || level < 2); ++i) {
        const std::size_t before = ::mallinfo2().uordblks;
        round();
        const std::size_t after = ::mallinfo2().uordblks;
        growths += " " + std::to_string(static_cast<long long>(after) - static_cast<long long>(before));
        level += after < before + allowed ? 1 : 0;
    }
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    level = 2; // their allocators have no such figures, but find leaks themselves
#endif
    return (level >= 2 ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
           << "the heap grew in rounds by" << growths << " bytes";
}

} // namespace test
