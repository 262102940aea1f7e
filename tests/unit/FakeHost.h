// A host around one unit whose system limiter is the fake: collects log lines and calls in their order.
#pragma once

#include "support/CapturedLog.h"
#include "unit/FakeWrappedUnit.h"
#include "unit/QOR_Limiter_Extension_AudioUnit.h"
#include "unit/UnitComponent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace test {

class FakeHost : public ::testing::Test {
protected:
    WrappedBehaviour wrapped;
    CapturedLog log;
    qor::RunLoop loop;
    qor::RunLoop::Scope scope{loop};
    AudioComponentRegistration registration{
        AudioComponent{
            {kAudioUnitType_Effect, kAudioUnitSubType_PeakLimiter, kAudioUnitManufacturer_Apple, 0, 0},
            "Test: Wrapped Unit",
            "Test",
            1},
        [this](const AudioComponentDescription& description, AudioComponentInstantiationOptions options) {
            return FakeWrappedUnit::make(wrapped, description, options);
        }};
    qor::Ref<qor::QOR_Limiter_Extension_AudioUnit> unit;

    void make() {
        unit = qor::QOR_Limiter_Extension_AudioUnit::init(qor::kQORLimiterComponent, {}).value();
        forget();
    }
    /// The lines so far, those on the queue behind those that were written at once.
    std::vector<std::string> lines() {
        loop.pump();
        return log.lines();
    }
    void forget() {
        loop.pump();
        log.clear();
    }
    AUAudioUnitBus& wrappedInput() { return (*wrapped.unit->inputBusses())[0]; }
    AUAudioUnitBus& wrappedOutput() { return (*wrapped.unit->outputBusses())[0]; }
};

} // namespace test
