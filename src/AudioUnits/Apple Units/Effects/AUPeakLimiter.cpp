#include "AudioUnits/Apple Units/Effects/AUPeakLimiter.h"

#include "Common/Extensions.h"

namespace qor {

namespace {

/// The value within the bounds; a NaN passes both comparisons and stays.
double held(double value, double lowest, double highest) noexcept {
    if (value < lowest) {
        value = lowest;
    }
    if (highest < value) {
        value = highest;
    }
    return value;
}

} // namespace

AUPeakLimiter::AUPeakLimiter() {
    create();
    initialize();
}

void AUPeakLimiter::create() {
    internalEffect = makeRef<AVAudioUnitEffect>(cd);
}

void AUPeakLimiter::initialize() {
    if (internalAU() == nullptr) {
        print("ERROR: Unit (peak limiter) not initialized.");
        return;
    }
    send(kLimiterParam_AttackTime, attackTime_);
    send(kLimiterParam_DecayTime, decayTime_);
    send(kLimiterParam_PreGain, preGain_);
    print("System Peak Limiter AudioUnit created and initialized.");
}

Ref<AUAudioUnit> AUPeakLimiter::auAudioUnit() const {
    return unwrapImplicit(internalEffect).AUAudioUnit();
}

AudioUnit AUPeakLimiter::internalAU() const {
    return unwrapImplicit(internalEffect).audioUnit();
}

void AUPeakLimiter::send(AudioUnitParameterID id, double value) const {
    if (AudioUnit unit = internalAU(); unit != nullptr) {
        AudioUnitSetParameter(unit, id, kAudioUnitScope_Global, 0, static_cast<float>(value), 0);
    }
}

void AUPeakLimiter::setAttackTime(double seconds) {
    attackTime_ = held(seconds, 0.001, 0.03);
    send(kLimiterParam_AttackTime, attackTime_);
}

void AUPeakLimiter::setDecayTime(double seconds) {
    decayTime_ = held(seconds, 0.001, 0.06);
    send(kLimiterParam_DecayTime, decayTime_);
}

void AUPeakLimiter::setPreGain(double decibels) {
    preGain_ = held(decibels, -40.0, 40.0);
    send(kLimiterParam_PreGain, preGain_);
}

Ref<AVAudioEngine> AUPeakLimiter::makeEngine() {
    return makeRef<AVAudioEngine>();
}

void AUPeakLimiter::run([[maybe_unused]] AUAudioUnitBus& bus) {
    if (internalAU() == nullptr) {
        print("ERROR: Unit (peak limiter) not initialized.");
        return;
    }
    print("CREATING AVAUDIO ENGINE ..");
    engine = makeEngine();
    if (!engine) {
        print("ERROR: Could not initialize internal audio engine.");
        return;
    }
    print("ATTACHING EFFECT ..");
    engine->attachNode(internalEffect);
    nodeDiagnostics();
    print("DETACHING EFFECT ..");
    engine->detachNode(internalEffect);
}

void AUPeakLimiter::safeprint(std::string_view line) {
    qor::safeprint(line);
}

} // namespace qor
