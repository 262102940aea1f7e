// Stands in the system limiter's place and tells what is done to it through the log's own queue, so that
// calls and log lines come in one order.
#pragma once

#include "Common/Extensions.h"
#include "platform/audio/Audio.h"

#include <string>
#include <vector>

namespace test {

using namespace platform;

/// How the fake behaves, and what its render block saw. Outlives the units.
struct WrappedBehaviour {
    bool exists = true;
    bool inputFormatFails = false;
    bool outputFormatFails = false;
    bool allocationFails = false;
    OSStatus renderStatus = noErr;
    bool pulls = false;

    struct RenderCall {
        AudioUnitRenderActionFlags* flags;
        const AudioTimeStamp* timestamp;
        std::uint32_t frames;
        long bus;
        AudioBufferList* output;
        const AURenderEvent* events;
        AURenderPullInputBlock pull;
        float outputAtEntry;
    };
    std::vector<RenderCall> renders;
    AUAudioUnit* unit = nullptr; // the latest one made
};

class FakeWrappedUnit final : public AUAudioUnit, public AudioUnitHandle {
public:
    static Result<Ref<AUAudioUnit>> make(WrappedBehaviour& behaviour,
                                         const AudioComponentDescription& description,
                                         AudioComponentInstantiationOptions options) {
        if (!behaviour.exists) {
            return NSError(NSOSStatusErrorDomain, kAudioUnitErr_FailedInitialization);
        }
        Ref<FakeWrappedUnit> unit(new FakeWrappedUnit(behaviour));
        if (auto base = unit->initWithComponentDescription(description, options); !base) {
            return base.error();
        }
        behaviour.unit = unit.get();
        return Ref<AUAudioUnit>(unit);
    }

    Ref<AUAudioUnitBusArray> inputBusses() override { return inputs_; }
    Ref<AUAudioUnitBusArray> outputBusses() override { return outputs_; }
    Result<void> allocateRenderResources() override {
        qor::debugprint("wrapped: allocate");
        if (behaviour_.allocationFails) {
            return NSError("wrapped", 77, {{NSLocalizedDescriptionKey, "no memory"}});
        }
        return AUAudioUnit::allocateRenderResources();
    }
    void deallocateRenderResources() override { qor::debugprint("wrapped: deallocate"); }
    void reset() override { qor::debugprint("wrapped: reset"); }
    void setShouldBypassEffect(bool bypass) override {
        qor::debugprint("wrapped: bypass " + text(bypass));
        AUAudioUnit::setShouldBypassEffect(bypass);
    }
    AUInternalRenderBlock internalRenderBlock() override {
        qor::debugprint("wrapped: render block");
        return [this](AudioUnitRenderActionFlags* flags, const AudioTimeStamp* timestamp,
                      std::uint32_t frames, long bus, AudioBufferList* output, const AURenderEvent* events,
                      const AURenderPullInputBlock& pull) {
            const auto* first = static_cast<const float*>(output->mBuffers[0].mData);
            behaviour_.renders.push_back(
                {flags, timestamp, frames, bus, output, events, pull, first == nullptr ? 0.0F : *first});
            if (behaviour_.pulls) {
                AudioUnitRenderActionFlags pullFlags = 0;
                pull(&pullFlags, timestamp, frames, 0, output);
            }
            return behaviour_.renderStatus;
        };
    }

    AudioUnit plainHandle() noexcept override { return this; }
    OSStatus setParameter(AudioUnitParameterID id, AudioUnitScope, AudioUnitElement,
                          AudioUnitParameterValue value, std::uint32_t) noexcept override {
        qor::debugprint("wrapped: parameter " + text(id) + " = " + text(value));
        return noErr;
    }
    OSStatus getParameter(AudioUnitParameterID, AudioUnitScope, AudioUnitElement,
                          AudioUnitParameterValue&) noexcept override {
        return kAudioUnitErr_InvalidParameter;
    }

private:
    explicit FakeWrappedUnit(WrappedBehaviour& behaviour)
        : behaviour_(behaviour), inputs_(makeBus(AUAudioUnitBusType::Input, behaviour.inputFormatFails)),
          outputs_(makeBus(AUAudioUnitBusType::Output, behaviour.outputFormatFails)) {}

    Ref<AUAudioUnitBusArray> makeBus(AUAudioUnitBusType type, const bool& fails) {
        const Ref<AUAudioUnitBus> bus = AUAudioUnitBus::initWithFormat(AVAudioFormat(44100.0, 2)).value();
        bus->setEnabled(false);
        bus->setShouldAllocateBuffer(false);
        const std::string name = type == AUAudioUnitBusType::Input ? "input" : "output";
        bus->setFormatVeto([bus = bus.get(), name, &fails](const AVAudioFormat& format) -> Result<void> {
            qor::debugprint("wrapped: " + name + " format " + text(format.sampleRate()) +
                            (bus->isEnabled() ? ", enabled" : ""));
            if (fails) {
                return NSError("wrapped", 5, {{NSLocalizedDescriptionKey, "not this format"}});
            }
            return {};
        });
        return makeRef<AUAudioUnitBusArray>(this, type, std::vector{bus});
    }

    WrappedBehaviour& behaviour_;
    Ref<AUAudioUnitBusArray> inputs_;
    Ref<AUAudioUnitBusArray> outputs_;
};

} // namespace test
