#include "kernel/dsp/DSPKernel.h"

#include <utility>

namespace qor {

namespace {

// Sample times are the host's: what leaves 64 bits wraps around.
std::int64_t framesBetween(std::int64_t from, std::int64_t to) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from));
}

std::int64_t later(std::int64_t time, unsigned frames) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(time) + frames);
}

} // namespace

void DSPKernel::process2(unsigned /*frameCount*/, unsigned /*bufferOffset*/) {}

void DSPKernel::process(unsigned /*frameCount*/, unsigned /*bufferOffset*/) {}

void DSPKernel::setParameterAutomated(AUParameterAddress /*address*/, float /*value*/,
                                      std::int64_t /*time*/) {}

void DSPKernel::handleMIDIEvent(const AUMIDIEvent& /*event*/) {}

void DSPKernel::processWithEvents(const AudioTimeStamp* timestamp, unsigned frameCount,
                                  const AURenderEvent* events, AUMIDIOutputEventBlock midiOutput) {
    midiOut = std::move(midiOutput);
    auto now = saturatingCast<std::int64_t>(timestamp->mSampleTime);
    unsigned framesRemaining = frameCount;
    const AURenderEvent* event = events;
    while (framesRemaining != 0) {
        if (event == nullptr) {
            process(framesRemaining, frameCount - framesRemaining);
            return;
        }
        const auto framesThisSegment =
            saturatingCast<unsigned>(fmax(0, framesBetween(now, event->head.eventSampleTime)));
        if (framesThisSegment != 0) {
            process(framesThisSegment, frameCount - framesRemaining);
            framesRemaining -= framesThisSegment;
            now = later(now, framesThisSegment);
        }
        performAllSimultaneousEvents(now, event);
    }
}

void DSPKernel::performAllSimultaneousEvents(std::int64_t now, const AURenderEvent*& event) {
    do {
        handleOneEvent(event);
        event = event->head.next;
    } while (event != nullptr && event->head.eventSampleTime <= now);
}

void DSPKernel::handleOneEvent(const AURenderEvent* event) {
    switch (event->head.eventType) {
    case AURenderEventParameter:
    case AURenderEventParameterRamp: // the ramp's length is not read: it jumps to its end value
        setParameterAutomated(event->parameter.parameterAddress, event->parameter.value,
                              event->parameter.eventSampleTime);
        break;
    case AURenderEventMIDI:
    case AURenderEventMIDISysEx:
        handleMIDIEvent(event->MIDI);
        break;
    default:
        break;
    }
}

double DSPKernel::fmax(std::int64_t a, std::int64_t b) {
    const auto first = static_cast<double>(a);
    const auto second = static_cast<double>(b);
    return first < second ? second : first;
}

} // namespace qor
