// The kernel alone as a render engine, by way of its adapter: what the whole unit is compared with.
#pragma once

#include "hosts/cli/RenderEngine.h"
#include "kernel/QOR_Limiter_Extension_Parameters.h"

#include <algorithm>
#include <vector>

namespace test {

class KernelEngine final : public qor::cli::RenderEngine {
public:
    KernelEngine()
        : adapter_(qor::makeRef<qor::QOR_Limiter_ExtensionDSPKernelAdapter>()), parameters_(adapter_) {}

    qor::Result<void> allocate(double sampleRate) override {
        const qor::AVAudioFormat format(sampleRate, 2);
        for (const auto& bus : {adapter_->inputBus(), adapter_->outputBus()}) {
            if (qor::Result<void> set = bus->setFormat(format); !set) {
                return set;
            }
        }
        adapter_->allocateRenderResources();
        renderBlock_ = adapter_->internalRenderBlock();
        return {};
    }
    qor::Result<void> setParameter(qor::AUParameterAddress address, float value) override {
        parameters_.parameterTree()->parameterWithAddress(address)->setValue(value);
        return {};
    }
    void setRawParameter(std::int32_t address, float value) override {
        adapter_->setParameterEx(address, value);
    }
    qor::Result<void> render(std::int64_t sampleTime, std::span<const qor::cli::AutomationEvent> events,
                             std::uint32_t frames, const float* const input[2],
                             float* const output[2]) override {
        std::vector<qor::AURenderEvent> list(events.size());
        for (std::size_t i = 0; i < events.size(); ++i) {
            list[i] = {};
            list[i].parameter.eventSampleTime = events[i].time;
            list[i].parameter.eventType = qor::AURenderEventParameter;
            list[i].parameter.parameterAddress = events[i].address;
            list[i].parameter.value = events[i].value;
            if (i > 0) {
                list[i - 1].head.next = &list[i];
            }
        }
        qor::AudioBufferListStorage<2> buffers;
        for (unsigned channel = 0; channel < 2; ++channel) {
            buffers.list.mBuffers[channel] = {1, frames * std::uint32_t{sizeof(float)}, output[channel]};
        }
        qor::AudioUnitRenderActionFlags flags = 0;
        qor::AudioTimeStamp time;
        time.mSampleTime = static_cast<double>(sampleTime);
        const qor::AURenderPullInputBlock pull = [&](qor::AudioUnitRenderActionFlags*,
                                                     const qor::AudioTimeStamp*, std::uint32_t count, long,
                                                     qor::AudioBufferList* wanted) {
            for (unsigned channel = 0; channel < 2; ++channel) {
                std::copy_n(input[channel], count, static_cast<float*>(wanted->mBuffers[channel].mData));
            }
            return qor::noErr;
        };
        const qor::OSStatus status =
            renderBlock_(&flags, &time, frames, 0, &buffers.list, list.empty() ? nullptr : list.data(), pull);
        return status == qor::noErr ? qor::Result<void>()
                                    : qor::cli::workFailed("status " + qor::text(status));
    }
    qor::cli::MeterValues meters() override {
        return {adapter_->getDynamicsValue1(), adapter_->getDynamicsValue2(), adapter_->getPeakValue1(),
                adapter_->getPeakValue2()};
    }
    std::uint64_t breakdowns() const override { return 0; }

private:
    qor::Ref<qor::QOR_Limiter_ExtensionDSPKernelAdapter> adapter_;
    qor::QOR_Limiter_Extension_Parameters parameters_;
    qor::AUInternalRenderBlock renderBlock_;
};

} // namespace test
