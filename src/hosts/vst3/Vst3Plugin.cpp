#include "hosts/vst3/Vst3Plugin.h"

#include "hosts/shared/StateChunk.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace qor::vst3 {

namespace {

constexpr const char* kStateKey = "chunk";

void describeBypass(DISTRHO::Parameter& parameter) {
    parameter.initDesignation(DISTRHO::kParameterDesignationBypass);
    parameter.symbol = "host_bypass";
}

} // namespace

Vst3Plugin::Vst3Plugin() : Plugin(kControlCount, 0, 1) {
    for (const ParameterRow& row : kParameterTable) {
        wanted_[row.address].store(row.defaultValue);
    }
    wanted_[kBypassIndex].store(0.0F);
    if (auto made = host::UnitHost::create(); made) {
        host_ = std::move(made).value();
    }
}

void Vst3Plugin::initParameter(uint32_t index, DISTRHO::Parameter& parameter) {
    if (index >= kParameterCount) {
        describeBypass(parameter);
        return;
    }
    const ParameterRow& row = kParameterTable[index];
    parameter.hints = DISTRHO::kParameterIsAutomatable;
    parameter.name = row.hostName;
    parameter.symbol = row.symbol;
    parameter.description = row.help;
    parameter.ranges = DISTRHO::ParameterRanges(row.defaultValue, row.minimum, row.maximum);
    if (!row.isStepped()) {
        return;
    }
    parameter.hints |= row.unit == AudioUnitParameterUnit::Boolean
                           ? DISTRHO::kParameterIsInteger | DISTRHO::kParameterIsBoolean
                           : DISTRHO::kParameterIsInteger;
    const auto count = static_cast<std::uint8_t>(row.valueNames.size());
    parameter.enumValues.count = count;
    parameter.enumValues.restrictedMode = true;
    auto* values = new DISTRHO::ParameterEnumerationValue[count]; // the framework's to delete
    for (std::uint8_t i = 0; i < count; ++i) {
        values[i].value = static_cast<float>(i);
        values[i].label = row.valueNames[i];
    }
    parameter.enumValues.values = values;
}

void Vst3Plugin::initState(uint32_t /*index*/, DISTRHO::State& state) {
    state.key = kStateKey;
    state.label = "State";
    state.hints = DISTRHO::kStateIsOnlyForDSP;
}

float Vst3Plugin::getParameterValue(uint32_t index) const {
    return index < kControlCount ? wanted_[index].load(std::memory_order_relaxed) : 0.0F;
}

void Vst3Plugin::setParameterValue(uint32_t index, float value) {
    if (index < kControlCount && std::isfinite(value)) {
        wanted_[index].store(value, std::memory_order_relaxed);
    }
}

DISTRHO::String Vst3Plugin::getState(const char* key) const {
    if (std::strcmp(key, kStateKey) != 0) {
        return DISTRHO::String();
    }
    const auto bytes = host::stateBytes(wantedValues(), "QOR Limiter");
    return bytes ? DISTRHO::String(std::string(textView(bytes.value())).c_str()) : DISTRHO::String();
}

void Vst3Plugin::setState(const char* key, const char* value) {
    if (std::strcmp(key, kStateKey) != 0 || *value == '\0') {
        return;
    }
    const auto state = host::checkState(dataFromText(value), host::Completeness::allParameters);
    if (!state) {
        print("QOR Limiter: the saved state is refused: " + state.error().localizedDescription());
        return;
    }
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        wanted_[i].store(state.value().values[i].value_or(wanted_[i].load()), std::memory_order_relaxed);
    }
    recalling_.store(true, std::memory_order_release);
}

void Vst3Plugin::activate() {
    recalling_.store(true, std::memory_order_release);
    if (host_ != nullptr && !host_->activate(getSampleRate())) {
        host_.reset();
    }
}

void Vst3Plugin::deactivate() {
    if (host_ != nullptr) {
        host_->deactivate();
    }
}

void Vst3Plugin::sampleRateChanged(double newSampleRate) {
    if (host_ != nullptr && host_->isActive() && !host_->activate(newSampleRate)) {
        host_.reset();
    }
}

void Vst3Plugin::run(const float** inputs, float** outputs, uint32_t frames) {
    if (host_ == nullptr) {
        for (int c = 0; c < 2; ++c) {
            std::copy_n(inputs[c], frames, outputs[c]);
        }
        return;
    }
    host_->setBypassed(wanted_[kBypassIndex].load(std::memory_order_relaxed) > 0.5F);
    const host::ParameterFollower::Values values = wantedValues();
    if (recalling_.exchange(false, std::memory_order_acquire)) {
        follower_.recall(*host_, values);
    }
    host_->render(inputs, outputs, frames, host::SpanEvents(follower_.changes(values)));
}

host::ParameterFollower::Values Vst3Plugin::wantedValues() const noexcept {
    host::ParameterFollower::Values values{};
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        values[i] = wanted_[i].load(std::memory_order_relaxed);
    }
    return values;
}

} // namespace qor::vst3

START_NAMESPACE_DISTRHO

Plugin* createPlugin() {
    return new qor::vst3::Vst3Plugin;
}

END_NAMESPACE_DISTRHO
