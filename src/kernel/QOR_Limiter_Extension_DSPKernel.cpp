#include "kernel/QOR_Limiter_Extension_DSPKernel.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <string_view>

namespace qor {

namespace {

float* samplesOf(const AudioBufferList* list, int channel, unsigned offset) {
    const AudioBuffer* buffers = list->mBuffers;
    return static_cast<float*>(buffers[channel].mData) + offset;
}

// One float after the other, forward. Where `out` starts inside the input that repeats what it has just
// written; everywhere else it is a block copy, which the library does with the widest registers there are.
void copyForward(const float* in, float* out, unsigned count) {
    const std::less<> before;
    if (before(in, out) && before(out, in + count)) {
        for (unsigned i = 0; i < count; ++i) {
            out[i] = in[i];
        }
    } else {
        std::copy_n(in, count, out);
    }
}

} // namespace

QOR_Limiter_Extension_DSPKernel::QOR_Limiter_Extension_DSPKernel() {
    std::copy_n(kSlotDefaults, kSlotCount, params);
}

void QOR_Limiter_Extension_DSPKernel::init(int channels, double sampleRate) {
    setSamplerate(static_cast<float>(sampleRate));
    channelCount = channels;
    reset();
}

void QOR_Limiter_Extension_DSPKernel::setSamplerate(float s) {
    samplerate = s;
    followers[0].setSamplerate(s);
    followers[1].setSamplerate(s);
    bandSplit.setSamplerate(s);
    limiter.setSamplerate(s);
}

void QOR_Limiter_Extension_DSPKernel::reset() {
    followers[0].reset();
    followers[1].reset();
    midSide.reset();
    bandSplit.reset();
    bandSplit.setCutoff1(0.0F);
    bandSplit.setCutoff2(1.0F);
    limiter.reset();
}

void QOR_Limiter_Extension_DSPKernel::setBuffers(AudioBufferList* in, AudioBufferList* out) {
    inBufferList = in;
    outBufferList = out;
}

void QOR_Limiter_Extension_DSPKernel::setParameter(AUParameterAddress address, float value) {
    if (address > kSlotCount) {
        return;
    }
    slotOf(*this, address) = value;
    printParameter(address, value);
    auto& [first, second] = limiter.limiters;
    switch (address) {
    case kLimiterAttack:
        first.setAttack(value);
        second.setAttack(value);
        break;
    case kLimiterRelease:
        first.setRelease(value);
        second.setRelease(value);
        break;
    case kLimiterThreshold:
        first.setThreshold(value);
        second.setThreshold(value);
        break;
    case kLimiterKnee: // the threshold keeps the coefficient of the law it was set under
        first.knee = value;
        second.knee = value;
        break;
    case kLimiterTrim:
        first.setTrim(value);
        second.setTrim(value);
        break;
    case kLimiterMix:
        first.mix = value;
        second.mix = value;
        break;
    case kLimiterAudition:
        first.audition = value;
        second.audition = value;
        break;
    case kLimiterInputFilterHP:
        bandSplit.setCutoff1(value);
        break;
    case kLimiterInputFilterLP:
        bandSplit.setCutoff2(value);
        break;
    default: // slots that `process` or the unit read, and inert ones
        break;
    }
}

float QOR_Limiter_Extension_DSPKernel::getParameter(AUParameterAddress address) const {
    if (address > kSlotCount) {
        return 0.0F;
    }
    return slotOf(*this, address);
}

void QOR_Limiter_Extension_DSPKernel::process2(unsigned /*frameCount*/, unsigned /*bufferOffset*/) {}

void QOR_Limiter_Extension_DSPKernel::process(unsigned frameCount, unsigned bufferOffset) {
    copyInputToOutput(frameCount, bufferOffset);
    if (bypassed || channelCount != 2) {
        return;
    }
    float* left = samplesOf(outBufferList, 0, bufferOffset);
    float* right = samplesOf(outBufferList, 1, bufferOffset);
    const auto count = static_cast<int>(frameCount);
    if (params[kLimiterBypass] == 0.0F) {
        limit(left, right, count);
    }
    followers[0].processBuffer(left, count);
    followers[1].processBuffer(right, count);
}

void QOR_Limiter_Extension_DSPKernel::copyInputToOutput(unsigned frameCount, unsigned bufferOffset) {
    for (int c = 0; c < channelCount; ++c) {
        const float* in = samplesOf(inBufferList, c, bufferOffset);
        float* out = samplesOf(outBufferList, c, bufferOffset);
        if (in != out) {
            copyForward(in, out, frameCount);
        }
    }
}

void QOR_Limiter_Extension_DSPKernel::limit(float* left, float* right, int count) {
    const auto mode = static_cast<unsigned>(saturatingCast<std::int32_t>(params[kLimiterMode]));
    if (params[kLimiterInputFilterHP] != 0.0F || params[kLimiterInputFilterLP] != 1.0F) {
        limitFiltered(left, right, count, mode);
        return;
    }
    switch (mode) {
    case 0:
        limiter.processBuffers(left, right, count);
        break;
    case 1:
        limiter.processBuffersLinked(left, right, count);
        break;
    case 2:
        limiter.processBuffersMidSide(left, right, count);
        break;
    case 3:
        limiter.processBuffersMidSideLinked(left, right, count);
        break;
    default: // the signal stays dry
        break;
    }
}

void QOR_Limiter_Extension_DSPKernel::limitFiltered(float* left, float* right, int count, unsigned mode) {
    bandSplit.split(left, right, count);
    const float* bandLeft = bandSplit.getBPLeft();
    const float* bandRight = bandSplit.getBPRight();
    switch (mode) {
    case 0:
        limiter.processBuffersSidechain(left, right, bandLeft, bandRight, count);
        break;
    case 1:
        limiter.processBuffersSidechainLinked(left, right, bandLeft, bandRight, count);
        break;
    case 2:
        midSide.split(bandLeft, bandRight, count);
        limiter.processBuffersSidechainMidSide(left, right, midSide.getMid(), midSide.getSide(), count);
        break;
    case 3:
        midSide.split(bandLeft, bandRight, count);
        limiter.processBuffersSidechainMidSideLinked(left, right, midSide.getMid(), midSide.getSide(), count);
        break;
    default: // the signal stays dry
        break;
    }
}

void QOR_Limiter_Extension_DSPKernel::setParameterAutomated(AUParameterAddress address, float value,
                                                            std::int64_t /*time*/) {
    setParameter(address, value);
}

void QOR_Limiter_Extension_DSPKernel::handleMIDIEvent(const AUMIDIEvent& event) {
    constexpr std::array<std::uint8_t, 5> kRealTime = {0xF8, 0xFA, 0xFB, 0xFC, 0xFF};
    if (event.length > 0 && std::find(kRealTime.begin(), kRealTime.end(), event.data[0]) != kRealTime.end()) {
        return;
    }
    if (midiOut && midiThrough) {
        QOR_UNSEEN_BEGIN // the host's callback
        midiOut(event.eventSampleTime, 0, event.length, event.data);
        QOR_UNSEEN_END
    }
}

// Made on the stack, without an allocation or a locale: this runs on the render thread too.
void QOR_Limiter_Extension_DSPKernel::printParameter(AUParameterAddress address, float value) const {
    constexpr std::string_view kHead = "unit received parameter : address:";
    constexpr std::string_view kMiddle = ", value:";
    std::array<char, 128> line; // the longest line has 109 characters
    char* const end = line.data() + line.size();
    char* at = std::copy(kHead.begin(), kHead.end(), line.data());
    QOR_UNSEEN_BEGIN // the standard library's conversions, and whatever sink the log has
    at = std::to_chars(at, end, address).ptr;
    at = std::copy(kMiddle.begin(), kMiddle.end(), at);
    at = std::to_chars(at, end, static_cast<double>(value), std::chars_format::fixed, 6).ptr;
    print(std::string_view(line.data(), static_cast<std::size_t>(at - line.data())));
    QOR_UNSEEN_END
}

} // namespace qor
