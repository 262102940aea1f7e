// A reference-counted callable: the platform's closures.
#pragma once

#include "platform/core/RealTime.h"

#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace platform {

template <class Signature>
class Block;

/// A callable that is copied by counting, never by allocating: a copy or a destruction that is not the last
/// one is one atomic operation, fit for the render thread. Empty means absent; calling an empty block is an
/// error.
template <class R, class... Args>
class Block<R(Args...)> {
public:
    Block() noexcept = default;
    Block(std::nullptr_t) noexcept {
    } // NOLINT(google-explicit-constructor): absent, as in the platform's interfaces

    /// Takes the callable over. Allocates once.
    template <class F>
    requires(!std::same_as<std::remove_cvref_t<F>, Block> && std::is_invocable_r_v<R, F&, Args...>)
        Block(F&& callable)
        : body_(new BodyOf<std::decay_t<F>>(std::forward<F>(callable))) {} // NOLINT

    Block(const Block& other) noexcept : body_(other.body_) {
        if (body_ != nullptr) {
            body_->count.fetch_add(1, std::memory_order_relaxed);
        }
    }
    Block(Block&& other) noexcept : body_(std::exchange(other.body_, nullptr)) {}
    Block& operator=(Block other) noexcept {
        std::swap(body_, other.body_);
        return *this;
    }
    ~Block() noexcept QOR_NONBLOCKING_IN_RENDER { release(); }

    R operator()(Args... args) const { return body_->invoke(body_, std::forward<Args>(args)...); }

    explicit operator bool() const noexcept { return body_ != nullptr; }
    /// True for copies of one block.
    friend bool operator==(const Block& a, const Block& b) noexcept { return a.body_ == b.body_; }

    /// How many copies there are (0 if absent). For diagnostics and tests.
    std::size_t useCount() const noexcept {
        return body_ == nullptr ? 0 : body_->count.load(std::memory_order_relaxed);
    }

private:
    struct Body {
        std::atomic<std::size_t> count{1};
        R (*invoke)(Body*, Args&&...) = nullptr;
        void (*destroy)(Body*) noexcept = nullptr;
    };
    template <class F>
    struct BodyOf : Body {
        template <class G>
        explicit BodyOf(G&& g) : callable(std::forward<G>(g)) {
            this->invoke = [](Body* self, Args&&... args) -> R {
                return static_cast<R>(static_cast<BodyOf*>(self)->callable(std::forward<Args>(args)...));
            };
            this->destroy = [](Body* self) noexcept { delete static_cast<BodyOf*>(self); };
        }
        F callable;
    };

    void release() noexcept QOR_NONBLOCKING_IN_RENDER {
        if (body_ != nullptr && body_->count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            QOR_UNSEEN_BEGIN // never on the render thread, whose copies are not the last ones
            body_->destroy(body_);
            QOR_UNSEEN_END
        }
    }

    Body* body_ = nullptr;
};

} // namespace platform
