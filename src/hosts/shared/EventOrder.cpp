#include "hosts/shared/EventOrder.h"

#include <algorithm>

namespace qor::host {

void EventOrder::prepare(const EventSource& events) noexcept {
    const std::uint32_t size = events.size();
    sorted_ = true;
    for (std::uint32_t i = 1; i < size && sorted_; ++i) {
        sorted_ = events.at(i - 1).frame <= events.at(i).frame;
    }
    if (sorted_) {
        return;
    }
    const std::uint32_t count = std::min(size, kCapacity);
    for (std::uint32_t i = 0; i < count; ++i) {
        order_[i] = {events.at(i).frame, i};
    }
    sort(count);
}

// Merges runs of doubling length from one array into the other: stable, and without the buffer that the
// standard library's stable sort would allocate.
void EventOrder::sort(std::uint32_t count) noexcept {
    const auto earlier = [](const Entry& a, const Entry& b) { return a.frame < b.frame; };
    for (std::uint32_t run = 1; run < count; run *= 2) {
        for (std::uint32_t start = 0; start < count; start += 2 * run) {
            const auto from = order_.begin() + start;
            const auto middle = order_.begin() + std::min(start + run, count);
            const auto end = order_.begin() + std::min(start + 2 * run, count);
            std::merge(from, middle, middle, end, scratch_.begin() + start, earlier);
        }
        std::copy_n(scratch_.begin(), count, order_.begin());
    }
}

} // namespace qor::host
