// The render loop that every audio kernel shares: it cuts a render call at the times of its events.
#pragma once

#include "platform/audio/AudioTypes.h"
#include "platform/core/Core.h"
#include "platform/core/RealTime.h"

#include <cstdint>

namespace qor {

/// Base of the audio kernels. Everything here runs on the render thread; nothing allocates or locks.
class DSPKernel {
public:
    AUMIDIOutputEventBlock midiOut;

    DSPKernel() = default;
    DSPKernel(const DSPKernel&) = delete;
    DSPKernel& operator=(const DSPKernel&) = delete;

    /// A second render entry of the kernel.
    virtual void process2(unsigned frameCount, unsigned bufferOffset) QOR_NONBLOCKING;
    /// Renders `frameCount` frames, starting `bufferOffset` frames into the attached buffers.
    virtual void process(unsigned frameCount, unsigned bufferOffset) QOR_NONBLOCKING;
    /// A parameter change that an event carries; `time` is the event's sample time, in frames.
    virtual void setParameterAutomated(AUParameterAddress address, float value, std::int64_t time)
        QOR_NONBLOCKING;
    virtual void handleMIDIEvent(const AUMIDIEvent& event) QOR_NONBLOCKING;

    /// Renders one call: the stretches between the events, and the events at their places. The kernel's
    /// buffers must be attached, and event times must fall inside the call: a later one makes `process` run
    /// past the buffers. Events left over when the frames run out are dropped.
    void processWithEvents(const AudioTimeStamp* timestamp, unsigned frameCount, const AURenderEvent* events,
                           AUMIDIOutputEventBlock midiOutput) QOR_NONBLOCKING;
    /// Applies the head event, whatever its time, and those behind it that are due at `now` or late; leaves
    /// the cursor on the first that is not.
    void performAllSimultaneousEvents(std::int64_t now, const AURenderEvent*& event) QOR_NONBLOCKING;
    void handleOneEvent(const AURenderEvent* event) QOR_NONBLOCKING;

    /// The larger of the two, compared in double precision.
    static double fmax(std::int64_t a, std::int64_t b) QOR_NONBLOCKING;

protected:
    // Kernels live inside their owners by value and are never deleted through this base.
    ~DSPKernel() = default;
};

} // namespace qor
