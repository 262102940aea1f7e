// Drives a kernel adapter as a host does: buffers, a time stamp, a pull callback that delivers a signal.
#pragma once

#include "kernel/QOR_Limiter_ExtensionDSPKernelAdapter.h"

#include <cstdint>
#include <vector>

namespace test {

/// A parameter outside any tree, to name an address.
inline qor::Ref<qor::AUParameter> parameterAt(qor::AUParameterAddress address) {
    return qor::AUParameterTree::createParameter("p", "P", address, 0.0F, 1.0F,
                                                 qor::AudioUnitParameterUnit::Generic, std::nullopt, 0,
                                                 std::nullopt, std::nullopt);
}

/// An output list over storage of its own.
struct StereoOutput {
    explicit StereoOutput(std::uint32_t frames) : left(frames, -9.0F), right(frames, -9.0F) {
        buffers.list.mBuffers[0] = {1, frames * 4, left.data()};
        buffers.list.mBuffers[1] = {1, frames * 4, right.data()};
    }
    qor::AudioBufferList* list() { return &buffers.list; }

    std::vector<float> left;
    std::vector<float> right;
    qor::AudioBufferListStorage<2> buffers;
};

/// A ramp that differs by channel: what the pull callback writes into the list's own buffers.
inline float dryLeft(std::uint32_t i) {
    return 0.001F * static_cast<float>(i % 500);
}
inline float dryRight(std::uint32_t i) {
    return -0.0005F * static_cast<float>(i % 700);
}

struct PullRecorder {
    int calls = 0;
    long lastBus = -1;
    std::uint32_t lastFrames = 0;
    std::uint32_t lastByteSize = 0;
    qor::OSStatus answer = qor::noErr;

    qor::AURenderPullInputBlock block() {
        return [this](qor::AudioUnitRenderActionFlags*, const qor::AudioTimeStamp*, std::uint32_t frames,
                      long bus, qor::AudioBufferList* list) {
            ++calls;
            lastBus = bus;
            lastFrames = frames;
            lastByteSize = list->mBuffers[0].mDataByteSize;
            if (answer == qor::noErr) {
                for (std::uint32_t i = 0; i < frames; ++i) {
                    static_cast<float*>(list->mBuffers[0].mData)[i] = dryLeft(i);
                    static_cast<float*>(list->mBuffers[1].mData)[i] = dryRight(i);
                }
            }
            return answer;
        };
    }
};

} // namespace test
