// The half of UnitHost that runs on the render thread.
#include "hosts/shared/UnitHost.h"

#include "hosts/shared/FlushToZero.h"
#include "hosts/shared/SampleGuard.h"
#include "kernel/ParameterTable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace qor::host {

namespace {

/// What may reach the unit: finite values of known parameters, held to their ranges, and MIDI as it comes.
bool admit(HostEvent& event) noexcept {
    if (event.kind != HostEventKind::Parameter) {
        return event.kind != HostEventKind::None;
    }
    if (event.address >= kParameterCount || !std::isfinite(event.value)) {
        return false;
    }
    event.value = kParameterTable[event.address].clamped(event.value);
    return true;
}

/// Gives a fresh kernel what events have written into the broken one since the fresh one was made.
void handOver(QOR_Limiter_ExtensionDSPKernelAdapter& broken,
              QOR_Limiter_ExtensionDSPKernelAdapter& fresh) noexcept {
    for (const ParameterRow& row : kParameterTable) {
        const auto number = static_cast<std::int32_t>(row.address);
        const float value = broken.getParameterEx(number);
        if (value >= row.minimum && value <= row.maximum && value != fresh.getParameterEx(number)) {
            fresh.setParameterEx(number, value);
        }
    }
}

} // namespace

void UnitHost::render(const float* const input[2], float* const output[2], std::uint32_t frames,
                      const EventSource& events) noexcept {
    const FlushToZero denormals(options_.flushToZero);
    const RunLoop::Scope scope(loop_); // what the unit queues lands on its own loop
    if (LiveUnit* fresh = next_.exchange(nullptr, std::memory_order_acquire); fresh != nullptr) {
        handOver(*live_->unit->kernelAdapter, *fresh->unit->kernelAdapter);
        live_ = fresh;
        broken_.store(false, std::memory_order_release);
    }
    QOR_Limiter_ExtensionDSPKernelAdapter& adapter = *live_->unit->kernelAdapter;
    const auto applyNow = [&adapter](const AURenderEvent* event) {
        for (; event != nullptr; event = event->head.next) {
            if (event->head.eventType == AURenderEventParameter) {
                adapter.setParameterEx(static_cast<std::int32_t>(event->parameter.parameterAddress),
                                       event->parameter.value);
            }
        }
    };

    order_.prepare(events);
    const std::uint32_t eventCount = events.size();
    std::uint32_t next = 0;
    std::uint32_t moved = 0;
    std::uint32_t position = 0;
    std::uint32_t reached = 0; // frame of the latest event: times never run backwards
    bool finalLimiter = adapter.getParameterEx(static_cast<std::int32_t>(kLimiterFinalLimiter)) == 1.0F;
    do {
        std::uint32_t end = frames - position < kChunk ? frames : position + kChunk;
        chunkEvents_.clear();
        for (; next < eventCount; ++next) {
            HostEvent event = events.at(order_[next]);
            if (!admit(event)) {
                continue;
            }
            const std::uint32_t frame =
                frames == 0 ? 0 : std::clamp(event.frame, std::min(reached, frames - 1), frames - 1);
            if (frames != 0 && frame >= end) {
                break;
            }
            if (chunkEvents_.isFull()) {
                if (frame > position) {
                    end = frame; // the rest finds room in the next chunk
                    break;
                }
                applyNow(chunkEvents_.head()); // a flood on one sample, and that sample is now
                chunkEvents_.clear();
            }
            if (event.kind == HostEventKind::Parameter && event.address == kLimiterFinalLimiter) {
                // The unit looks at the final limiter's switch once a call: the chunk ends where it turns.
                const bool turnsOn = event.value == 1.0F;
                if (turnsOn != finalLimiter && frame > position) {
                    end = frame;
                    break;
                }
                finalLimiter = turnsOn;
            }
            reached = frame;
            chunkEvents_.add(event, sampleTime_ + (frame - position));
            if (event.kind == HostEventKind::Parameter) {
                moved |= 1U << event.address;
            }
        }
        if (frames == 0 || broken_.load(std::memory_order_acquire)) {
            applyNow(chunkEvents_.head());
        }
        if (frames != 0) {
            const float* in[2];
            float* out[2];
            for (int c = 0; c < 2; ++c) {
                in[c] = input[c] == nullptr ? nullptr : input[c] + position;
                const bool usable = output[c] != nullptr && (c == 0 || output[1] != output[0]);
                out[c] = usable ? output[c] + position : spare_[c];
            }
            renderChunk(in, out, end - position, chunkEvents_.head());
        }
        position = end;
    } while (position < frames);
    if (moved != 0) {
        automated_.fetch_or(moved, std::memory_order_release);
    }
}

void UnitHost::renderChunk(const float* const input[2], float* const output[2], std::uint32_t frames,
                           const AURenderEvent* events) noexcept {
    for (int c = 0; c < 2; ++c) {
        chunkInput_[c] = input[c];
        chunkOutput_[c] = output[c];
    }
    if (!live_->render) {
        for (int c = 0; c < 2; ++c) {
            std::fill_n(output[c], frames, 0.0F);
        }
        return;
    }
    pulls_ = 0;
    chunkBroken_ = broken_.load(std::memory_order_acquire);
    if (!chunkBroken_) {
        AudioBufferListStorage<2> list;
        for (int c = 0; c < 2; ++c) {
            list.list.mBuffers[c] = {1, frames * std::uint32_t{sizeof(float)}, output[c]};
        }
        AudioTimeStamp time;
        time.mSampleTime = static_cast<double>(sampleTime_);
        time.mFlags = kAudioTimeStampSampleTimeValid;
        AudioUnitRenderActionFlags flags = 0;
        QOR_UNSEEN_BEGIN // the unit's block
        const OSStatus status = live_->render(&flags, &time, frames, 0, &list.list, events, pullBlock_);
        QOR_UNSEEN_END
        chunkBroken_ = chunkBroken_ || status != noErr || pulls_ == 0 || !allFinite(output[0], frames) ||
                       !allFinite(output[1], frames);
    }
    if (chunkBroken_) {
        deliverHeldDown(output, frames);
    }
    bypass_.process(dry_, output, frames);
    sampleTime_ += frames;
}

// The first pull of a chunk delivers the input. A later one comes from the stage behind the kernel and gets
// what the kernel made, which stands in the output list already.
OSStatus UnitHost::pull(std::uint32_t frames, AudioBufferList* list) noexcept {
    const bool first = pulls_++ == 0;
    for (std::uint32_t c = 0; c < 2 && c < list->mNumberBuffers; ++c) {
        AudioBuffer& buffer = list->mBuffers[c];
        if (buffer.mData == nullptr) {
            buffer.mData = chunkOutput_[c];
        }
        auto* target = static_cast<float*>(buffer.mData);
        if (first) {
            copyGuarded(chunkInput_[c], target, frames);
            dry_[c] = target;
            continue;
        }
        chunkBroken_ = chunkBroken_ || !allFinite(chunkOutput_[c], frames);
        const float* source = options_.plainPull ? dry_[c] : chunkOutput_[c];
        if (source != target) {
            std::memcpy(target, source, frames * sizeof(float));
        }
    }
    return noErr;
}

void UnitHost::deliverHeldDown(float* const output[2], std::uint32_t frames) noexcept {
    if (pulls_ == 0) {
        // Both inputs are read before an output is written: they may be the same places crosswise.
        for (int c = 0; c < 2; ++c) {
            copyGuarded(chunkInput_[c], dryCopy_[c], frames);
            dry_[c] = dryCopy_[c];
        }
    }
    for (int c = 0; c < 2; ++c) {
        copyHeldDown(dry_[c], output[c], frames);
    }
    if (!broken_.exchange(true, std::memory_order_acq_rel)) {
        replacements_.fetch_add(1, std::memory_order_relaxed);
    }
}

} // namespace qor::host
