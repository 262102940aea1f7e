// The limiter's kernel: owns the whole signal path and everything it works on.
#pragma once

#include "kernel/BandSplitFilter3.h"
#include "kernel/Follower.h"
#include "kernel/FrameLimit.h"
#include "kernel/Limiter2.h"
#include "kernel/MidSideSplitter.h"
#include "kernel/ParameterAddresses.h"
#include "kernel/dsp/DSPKernel.h"

#include <cstdint>

namespace qor {

/// `process` and the events run on the render thread, parameters may also be written on the main thread,
/// where the meters are read: plain fields, without a lock. Nothing allocates after construction. There is no
/// error path: what is out of range is dropped.
class QOR_Limiter_Extension_DSPKernel final : public DSPKernel {
public:
    static constexpr int kSlotCount = 15;
    static constexpr float kSlotDefaults[kSlotCount] = {};

    std::int32_t channelCount = 2;
    AudioBufferList* inBufferList = nullptr;
    AudioBufferList* outBufferList = nullptr;
    float samplerate = 48000.0F; // hertz
    float params[kSlotCount];    // as last written, by address
    Follower followers[2];       // left, right
    BandSplitFilter3 bandSplit;
    MidSideSplitter midSide; // of the filtered signal
    Limiter2 limiter;
    bool bypassed = false;
    bool midiThrough = false; // nothing sets it: MIDI is not forwarded
    std::int32_t maximumFramesToRender = kFrameLimit;

    QOR_Limiter_Extension_DSPKernel();

    void init(int channels, double sampleRate);
    void setSamplerate(float s);
    float getSamplerate() const { return samplerate; }
    /// Leaves the slots alone and the filter's edges wide open, whatever slots 9 and 10 say.
    void reset() QOR_NONBLOCKING_IN_RENDER;
    /// The lists stay the caller's.
    void setBuffers(AudioBufferList* in, AudioBufferList* out) QOR_NONBLOCKING;

    /// Stores, writes a line to the log, and routes. Addresses above 15 are dropped.
    void setParameter(AUParameterAddress address, float value) QOR_NONBLOCKING_IN_RENDER;
    /// The slot as last written; 0.0 above address 15.
    float getParameter(AUParameterAddress address) const QOR_NONBLOCKING;

    void setBypassed(bool value) { bypassed = value; }
    bool getBypassed() const { return bypassed; }
    void setMaximumFramesToRender(int frames) { maximumFramesToRender = frames; }
    int getMaximumFramesToRender() const { return maximumFramesToRender; }

    /// 1.0 without reduction; left or mid, and right or side.
    float getDynamicsValue1() const { return limiter.limiters[0].getCompression(); }
    float getDynamicsValue2() const { return limiter.limiters[1].getCompression(); }
    /// Linear output peaks, 0.0 to 1.0.
    float getPeakValue1() const { return followers[0].getPeakLimited(); }
    float getPeakValue2() const { return followers[1].getPeakLimited(); }

    void process2(unsigned frameCount, unsigned bufferOffset) QOR_NONBLOCKING override;
    void process(unsigned frameCount, unsigned bufferOffset) QOR_NONBLOCKING override;
    void setParameterAutomated(AUParameterAddress address, float value, std::int64_t time)
        QOR_NONBLOCKING override;
    void handleMIDIEvent(const AUMIDIEvent& event) QOR_NONBLOCKING override;

private:
    /// Addresses 0 to 15. The last one lies behind the slots: the first follower's sample rate.
    template <class Kernel>
    static auto& slotOf(Kernel& kernel, AUParameterAddress address) {
        return address < kSlotCount ? kernel.params[address] : kernel.followers[0].samplerate;
    }

    void copyInputToOutput(unsigned frameCount, unsigned bufferOffset) QOR_NONBLOCKING;
    void limit(float* left, float* right, int count) QOR_NONBLOCKING;
    void limitFiltered(float* left, float* right, int count, unsigned mode) QOR_NONBLOCKING;
    void printParameter(AUParameterAddress address, float value) const QOR_NONBLOCKING_IN_RENDER;
};

} // namespace qor
