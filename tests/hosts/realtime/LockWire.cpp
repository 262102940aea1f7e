// The thread library's functions that take, give or wait for a lock, in place of the C library's: they count
// and pass on. A lock that nobody holds makes no system call, so these are watched by name.
#include "hosts/realtime/TripwireState.h"

#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>

#define QOR_EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

void trip(const void* caller) noexcept {
    test::WireState& state = test::wireState;
    if (state.armed) {
        ++state.trips.locks;
        if (state.trips.firstCaller == nullptr) {
            state.trips.firstCaller = caller;
        }
    }
}

/// The next definition of a function behind this program's.
template <class Function>
Function* next(const char* name) noexcept {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// NOLINTBEGIN(bugprone-macro-parentheses): a type
#define QOR_LOCK_WIRE(name, type)                                                                            \
    QOR_EXPORTED int name(type* object) noexcept {                                                           \
        static auto* const real = next<int(type*)>(#name);                                                   \
        trip(__builtin_return_address(0));                                                                   \
        return real(object);                                                                                 \
    }

#define QOR_TIMED_LOCK_WIRE(name, type)                                                                      \
    QOR_EXPORTED int name(type* object, const timespec* until) noexcept {                                    \
        static auto* const real = next<int(type*, const timespec*)>(#name);                                  \
        trip(__builtin_return_address(0));                                                                   \
        return real(object, until);                                                                          \
    }

// NOLINTEND(bugprone-macro-parentheses)

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): names of the C library's

QOR_LOCK_WIRE(pthread_mutex_lock, pthread_mutex_t)
QOR_LOCK_WIRE(pthread_mutex_trylock, pthread_mutex_t)
QOR_LOCK_WIRE(pthread_mutex_unlock, pthread_mutex_t)
QOR_TIMED_LOCK_WIRE(pthread_mutex_timedlock, pthread_mutex_t)
QOR_LOCK_WIRE(pthread_rwlock_rdlock, pthread_rwlock_t)
QOR_LOCK_WIRE(pthread_rwlock_tryrdlock, pthread_rwlock_t)
QOR_LOCK_WIRE(pthread_rwlock_wrlock, pthread_rwlock_t)
QOR_LOCK_WIRE(pthread_rwlock_trywrlock, pthread_rwlock_t)
QOR_LOCK_WIRE(pthread_rwlock_unlock, pthread_rwlock_t)
QOR_LOCK_WIRE(pthread_cond_signal, pthread_cond_t)
QOR_LOCK_WIRE(pthread_cond_broadcast, pthread_cond_t)
QOR_LOCK_WIRE(sem_trywait, sem_t)
QOR_LOCK_WIRE(sem_post, sem_t)

QOR_EXPORTED int sem_wait(sem_t* semaphore) {
    static auto* const real = next<int(sem_t*)>("sem_wait");
    trip(__builtin_return_address(0));
    return real(semaphore);
}

QOR_EXPORTED int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    static auto* const real = next<int(pthread_cond_t*, pthread_mutex_t*)>("pthread_cond_wait");
    trip(__builtin_return_address(0));
    return real(condition, mutex);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
