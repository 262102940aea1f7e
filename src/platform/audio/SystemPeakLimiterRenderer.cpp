#include "platform/audio/SystemPeakLimiterRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace platform {

SystemPeakLimiter::Renderer::Renderer() noexcept {
    for (std::size_t i = 0; i < kRanges.size(); ++i) {
        parameters_[i].store(kRanges[i].initial, std::memory_order_relaxed);
    }
    takeParameters();
}

void SystemPeakLimiter::Renderer::allocate(const AVAudioFormat& format, std::uint32_t maximumFrames) {
    buffer_ = std::make_unique<AVAudioPCMBuffer>(format, maximumFrames);
    dsp_.prepare(format.sampleRate());
    wasBypassed_ = false;
}

void SystemPeakLimiter::Renderer::deallocate() noexcept {
    buffer_.reset();
}

bool SystemPeakLimiter::Renderer::setParameter(AUParameterAddress address, float value) noexcept {
    if (address >= kRanges.size() || std::isnan(value)) {
        return false;
    }
    const Range& range = kRanges[address];
    parameters_[address].store(std::clamp(value, range.lowest, range.highest), std::memory_order_relaxed);
    return true;
}

float SystemPeakLimiter::Renderer::parameter(AUParameterAddress address) const noexcept {
    return address < kRanges.size() ? parameters_[address].load(std::memory_order_relaxed) : 0.0F;
}

void SystemPeakLimiter::Renderer::takeParameters() noexcept {
    dsp_.set(parameter(0), parameter(1), parameter(2));
}

void SystemPeakLimiter::Renderer::limit(float* left, float* right, std::uint32_t frames,
                                        const AudioTimeStamp* timestamp,
                                        const AURenderEvent* events) noexcept {
    const double now = timestamp == nullptr ? 0.0 : timestamp->mSampleTime;
    std::uint32_t done = 0;
    takeParameters();
    for (; events != nullptr; events = events->head.next) {
        if (events->head.eventType != AURenderEventParameter &&
            events->head.eventType != AURenderEventParameterRamp) {
            continue;
        }
        const double offset = static_cast<double>(events->head.eventSampleTime) - now;
        const std::uint32_t due =
            offset > done ? static_cast<std::uint32_t>(std::min<double>(offset, frames)) : done;
        dsp_.process(left + done, right == nullptr ? nullptr : right + done, due - done);
        done = due;
        setParameter(events->parameter.parameterAddress, events->parameter.value);
        takeParameters();
    }
    dsp_.process(left + done, right == nullptr ? nullptr : right + done, frames - done);
}

OSStatus SystemPeakLimiter::Renderer::render(AudioUnitRenderActionFlags* flags,
                                             const AudioTimeStamp* timestamp, std::uint32_t frames, long bus,
                                             AudioBufferList* output, const AURenderEvent* events,
                                             const AURenderPullInputBlock& pull) noexcept {
    if (!buffer_) {
        return kAudioUnitErr_Uninitialized;
    }
    if (frames > buffer_->frameCapacity()) {
        return kAudioUnitErr_TooManyFramesToProcess;
    }
    if (!pull) {
        return kAudioUnitErr_NoConnection;
    }
    if (bus != 0) {
        return kAudioUnitErr_InvalidElement;
    }
    if (output == nullptr || output->mNumberBuffers == 0) {
        return kAudio_ParamError;
    }

    const std::uint32_t channels = std::min(output->mNumberBuffers, buffer_->format().channelCount());
    std::array<float*, kMaximumChannels> wanted{}; // where the host wants the samples
    for (std::uint32_t c = 0; c < channels; ++c) {
        AudioBuffer& out = output->mBuffers[c];
        if (out.mData == nullptr) {
            out.mNumberChannels = 1;
            out.mDataByteSize = frames * static_cast<std::uint32_t>(sizeof(float));
            out.mData = buffer_->floatChannelData(c);
        }
        wanted[c] = static_cast<float*>(out.mData);
    }

    AudioUnitRenderActionFlags pullFlags = flags == nullptr ? 0 : *flags;
    QOR_UNSEEN_BEGIN // the callback of whoever renders
    if (const OSStatus status = pull(&pullFlags, timestamp, frames, 0, output); status != noErr) {
        return status;
    }
    QOR_UNSEEN_END

    // A source may have pointed the list at its own memory instead of filling it.
    for (std::uint32_t c = 0; c < channels; ++c) {
        AudioBuffer& out = output->mBuffers[c];
        if (out.mData != wanted[c]) {
            if (out.mData == nullptr) {
                return kAudioUnitErr_NoConnection;
            }
            std::memmove(wanted[c], out.mData, frames * sizeof(float));
            out.mData = wanted[c];
        }
    }

    const bool bypassed = bypass.load(std::memory_order_relaxed);
    if (bypassed) {
        wasBypassed_ = true;
        return noErr;
    }
    if (wasBypassed_) {
        wasBypassed_ = false;
        dsp_.reset();
    }
    limit(wanted[0], channels > 1 ? wanted[1] : nullptr, frames, timestamp, events);
    return noErr;
}

} // namespace platform
