// The processor's treatment of denormal numbers around a render call.
#pragma once

#include <cstdint>

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace qor::host {

/// Lets the processor take denormal numbers for 0 for the scope's length, and gives the caller's setting
/// back. Does nothing when not wanted, or where the processor has no such mode that we know.
class FlushToZero {
public:
    explicit FlushToZero(bool wanted) noexcept : wanted_(wanted) {
        if (wanted_) {
            before_ = read();
            write(before_ | kFlushBits);
        }
    }
    ~FlushToZero() {
        if (wanted_) {
            write(before_);
        }
    }
    FlushToZero(const FlushToZero&) = delete;
    FlushToZero& operator=(const FlushToZero&) = delete;

private:
#if defined(__SSE__)
    using Word = unsigned;
    static constexpr Word kFlushBits = 0x8040; // flush to zero, denormals are zero
    static Word read() noexcept {
        return _mm_getcsr();
    }
    static void write(Word word) noexcept {
        _mm_setcsr(word);
    }
#elif defined(__aarch64__)
    using Word = std::uint64_t;
    static constexpr Word kFlushBits = Word{1} << 24;
    static Word read() noexcept {
        Word word = 0;
        asm volatile("mrs %0, fpcr" : "=r"(word));
        return word;
    }
    static void write(Word word) noexcept {
        asm volatile("msr fpcr, %0" : : "r"(word));
    }
#else
    using Word = unsigned;
    static constexpr Word kFlushBits = 0;
    static Word read() noexcept {
        return 0;
    }
    static void write(Word /*word*/) noexcept {}
#endif

    bool wanted_;
    Word before_ = 0;
};

} // namespace qor::host
