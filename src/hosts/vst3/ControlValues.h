// The values that a host sets, with those left aside that it sends while a person holds the control.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace qor::vst3 {

/// A host plays a person's moves back a few blocks late; taken at once, they would pull a knob that is being
/// dragged. What comes meanwhile waits, and the newest of it counts when the control is let go. Any thread,
/// without waiting; `hold`, `move` and `release` are one thread's at a time.
template <std::size_t kCount>
class ControlValues {
public:
    float operator[](std::size_t index) const noexcept {
        return values_[index].load(std::memory_order_relaxed);
    }
    /// The host's doing.
    void set(std::size_t index, float value) noexcept {
        if (held_[index].load()) {
            waiting_[index].store(value);
            waits_[index].store(true);
            if (held_[index].load() || !waits_[index].exchange(false)) {
                return; // let go in between: whoever takes the flag puts the value in place
            }
        }
        values_[index].store(value);
    }
    /// A person takes the control, moves it, and lets go.
    void hold(std::size_t index) noexcept {
        waits_[index].store(false);
        held_[index].store(true);
    }
    void move(std::size_t index, float value) noexcept { values_[index].store(value); }
    void release(std::size_t index) noexcept {
        held_[index].store(false);
        if (waits_[index].exchange(false)) {
            values_[index].store(waiting_[index].load());
        }
    }

private:
    std::array<std::atomic<float>, kCount> values_{};
    std::array<std::atomic<float>, kCount> waiting_{};
    std::array<std::atomic<bool>, kCount> waits_{};
    std::array<std::atomic<bool>, kCount> held_{};
};

} // namespace qor::vst3
