#include "platform/core/LogRing.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace platform {

// Each slot carries the turn at which it may be written (its index plus a multiple of the size) or, one above
// that, read: a bounded queue for many writers and one reader.

LogRing::LogRing(LogSink& downstream) : downstream_(downstream), slots_(std::make_unique<Slot[]>(kSlots)) {
    for (std::size_t i = 0; i < kSlots; ++i) {
        slots_[i].turn.store(i, std::memory_order_relaxed);
    }
    writer_ = std::thread([this] { run(); });
}

LogRing::~LogRing() {
    {
        const std::lock_guard lock(endingMutex_);
        ending_ = true;
    }
    endingSignal_.notify_one();
    writer_.join();
}

void LogRing::writeLine(std::string_view line) noexcept {
    std::uint64_t position = head_.load(std::memory_order_relaxed);
    for (;;) {
        Slot& slot = slots_[position % kSlots];
        const std::uint64_t turn = slot.turn.load(std::memory_order_acquire);
        if (turn == position) {
            if (head_.compare_exchange_weak(position, position + 1, std::memory_order_relaxed)) {
                slot.length = static_cast<std::uint32_t>(std::min(line.size(), kLineLength));
                std::memcpy(slot.text, line.data(), slot.length);
                slot.turn.store(position + 1, std::memory_order_release);
                return;
            }
        } else if (turn < position) {
            dropped_.fetch_add(1, std::memory_order_relaxed);
            return;
        } else {
            position = head_.load(std::memory_order_relaxed);
        }
    }
}

bool LogRing::drainOne() noexcept {
    Slot& slot = slots_[tail_ % kSlots];
    if (slot.turn.load(std::memory_order_acquire) != tail_ + 1) {
        return false;
    }
    downstream_.writeLine({slot.text, slot.length});
    slot.turn.store(tail_ + kSlots, std::memory_order_release);
    ++tail_;
    return true;
}

// The writer looks by itself every so often: whoever writes lines never has to wake it.
void LogRing::run() noexcept {
    constexpr std::chrono::milliseconds kPeriod{10};
    std::unique_lock lock(endingMutex_);
    for (;;) {
        const bool ending = endingSignal_.wait_for(lock, kPeriod, [this] { return ending_; });
        while (drainOne()) {
        }
        if (ending) {
            return;
        }
    }
}

} // namespace platform
