// Marks what runs on the render thread, for compilers that check it.
#pragma once

// Stands behind a function's parameters and `noexcept`. The function, and whatever it calls, neither
// allocates nor locks nor waits. The compiler checks it with -Wfunction-effects, and a run under
// -fsanitize=realtime checks the rest (scripts/realtime-check.sh does both). Nothing for other compilers.
#if defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::nonblocking)
#define QOR_NONBLOCKING [[clang::nonblocking]]
#endif
#endif
#ifndef QOR_NONBLOCKING
#define QOR_NONBLOCKING
#endif

// The same for what other threads call too and may wait there: the compiler checks it everywhere, a run only
// where the caller is QOR_NONBLOCKING.
#if defined(__has_feature)
#if __has_feature(realtime_sanitizer)
#define QOR_NONBLOCKING_IN_RENDER QOR_NONBLOCKING __attribute__((no_sanitize("realtime")))
#endif
#endif
#ifndef QOR_NONBLOCKING_IN_RENDER
#define QOR_NONBLOCKING_IN_RENDER QOR_NONBLOCKING
#endif

// Around a call that the compiler cannot look into; docs/realtime.md gives the reason for each. A run still
// checks it.
#if defined(__clang__)
#define QOR_UNSEEN_BEGIN                                                                                     \
    _Pragma("clang diagnostic push") _Pragma("clang diagnostic ignored \"-Wunknown-warning-option\"")        \
        _Pragma("clang diagnostic ignored \"-Wfunction-effects\"")
#define QOR_UNSEEN_END _Pragma("clang diagnostic pop")
#else
#define QOR_UNSEEN_BEGIN
#define QOR_UNSEEN_END
#endif
