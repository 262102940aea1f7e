#include "platform/audio/AUAudioUnitBus.h"

#include "platform/audio/AudioTypes.h"

#include <cmath>

namespace platform {

namespace {

NSError notSupported(std::string why) {
    return {NSOSStatusErrorDomain,
            kAudioUnitErr_FormatNotSupported,
            {{NSLocalizedDescriptionKey, std::move(why)}}};
}

Result<void> checkFormat(const AVAudioFormat& format) {
    if (format.channelCount() == 0) {
        return notSupported("A bus needs at least one channel.");
    }
    if (!std::isfinite(format.sampleRate()) || format.sampleRate() <= 0.0) {
        return notSupported("A bus needs a sample rate above 0 Hz.");
    }
    return {};
}

} // namespace

Result<Ref<AUAudioUnitBus>> AUAudioUnitBus::initWithFormat(const AVAudioFormat& format) {
    if (const Result<void> check = checkFormat(format); !check) {
        return check.error();
    }
    return Ref<AUAudioUnitBus>(new AUAudioUnitBus(format));
}

Result<void> AUAudioUnitBus::setFormat(const AVAudioFormat& format) {
    if (Result<void> check = checkFormat(format); !check) {
        return check;
    }
    if (maximumChannelCount_ != 0 && format.channelCount() > maximumChannelCount_) {
        return notSupported("The bus takes at most " + std::to_string(maximumChannelCount_) +
                            " channels, not " + std::to_string(format.channelCount()) + ".");
    }
    if (veto_) {
        if (Result<void> answer = veto_(format); !answer) {
            return answer;
        }
    }
    format_ = format;
    return {};
}

} // namespace platform
