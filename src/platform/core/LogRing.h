// A log sink for plug-ins: a bounded ring with a writer thread, so that a slow reader never holds up audio.
#pragma once

#include "platform/core/Log.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>

namespace platform {

/// Takes lines from any number of threads without allocating, locking or waiting, and passes them on in order
/// to another sink from a thread of its own. A line longer than `kLineLength` bytes is cut; when the ring is
/// full the line is dropped and counted.
class LogRing final : public LogSink {
public:
    static constexpr std::size_t kSlots = 1024;
    static constexpr std::size_t kLineLength = 248;

    /// Starts the writer thread. `downstream` must outlive the ring.
    explicit LogRing(LogSink& downstream);
    /// Writes what is still in the ring, then ends the thread.
    ~LogRing() override;

    void writeLine(std::string_view line) noexcept override;
    /// Lines that found the ring full since the start.
    std::uint64_t droppedLines() const noexcept { return dropped_.load(std::memory_order_relaxed); }

private:
    struct Slot {
        std::atomic<std::uint64_t> turn{0};
        std::uint32_t length = 0;
        char text[kLineLength] = {};
    };

    bool drainOne() noexcept;
    void run() noexcept;

    LogSink& downstream_;
    std::unique_ptr<Slot[]> slots_;
    std::atomic<std::uint64_t> head_{0};
    std::uint64_t tail_ = 0;
    std::atomic<std::uint64_t> dropped_{0};
    std::mutex endingMutex_; // between the destructor and the writer only
    std::condition_variable endingSignal_;
    bool ending_ = false;
    std::thread writer_;
};

} // namespace platform
