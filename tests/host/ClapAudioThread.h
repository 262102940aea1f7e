// An audio thread around an active instance.
#pragma once

#include "ClapTestHost.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

namespace test {

/// Renders small blocks of a loud tone until it ends, in about the time of a sound card.
class ClapAudioThread {
public:
    explicit ClapAudioThread(ClapPluginUnderTest& plugin) : plugin_(plugin), thread_([this] { run(); }) {}
    ~ClapAudioThread() {
        ending_ = true;
        thread_.join();
    }
    ClapAudioThread(const ClapAudioThread&) = delete;
    ClapAudioThread& operator=(const ClapAudioThread&) = delete;

    std::uint64_t blocks() const { return blocks_.load(); }

private:
    static constexpr std::uint32_t kFrames = 64;

    void run() {
        float samples[2][kFrames];
        while (!ending_) {
            for (std::uint32_t i = 0; i < kFrames; ++i) {
                samples[0][i] = samples[1][i] = i % 32 < 16 ? 1.5F : -1.5F;
            }
            float* const places[2] = {samples[0], samples[1]};
            plugin_.process(places, places, kFrames);
            ++blocks_;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    ClapPluginUnderTest& plugin_;
    std::atomic<bool> ending_{false};
    std::atomic<std::uint64_t> blocks_{0};
    std::thread thread_;
};

} // namespace test
