// What every call from the host goes through: no exception leaves it, and in debug builds its thread is
// checked.
#pragma once

#include "hosts/clap/ClapInstance.h"

#include <utility>

namespace qor::clap {

#ifdef NDEBUG
inline constexpr bool kChecksThreads = false;
#else
inline constexpr bool kChecksThreads = true;
#endif

ClapInstance& instanceOf(const clap_plugin_t* plugin) noexcept;

inline bool isReady(const clap_plugin_t* plugin) noexcept {
    return instanceOf(plugin).isReady();
}

inline void checkThread(const clap_plugin_t* plugin, Promised promised, const char* call) noexcept {
    if constexpr (kChecksThreads) {
        instanceOf(plugin).host().checkThread(promised, call);
    }
}

/// The call's result, or `failed` if it ran out of memory.
template <class T, class Call>
T guarded(T failed, Call&& call) noexcept {
    try {
        return std::forward<Call>(call)();
    } catch (...) {
        return failed;
    }
}

template <class Call>
void guarded(Call&& call) noexcept {
    try {
        std::forward<Call>(call)();
    } catch (...) { // NOLINT(bugprone-empty-catch): the host can't be told
    }
}

} // namespace qor::clap
