#include "hosts/vst3/Vst3Plugin.h"

#include "hosts/shared/StateChunk.h"
#include "hosts/vst3/Vst3View.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>

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
        wanted_.set(row.address, row.defaultValue);
    }
    if (isDummyInstance()) {
        return; // asked for names and ranges only, for as long as the code is loaded
    }
    runtime_ = host::PluginRuntime::acquire();
    auto made = host::UnitHost::create();
    if (!made) {
        print("QOR Limiter could not be made: " + made.error().localizedDescription());
        return;
    }
    host_ = std::move(made).value();
    host_->setOnUnitReplaced([this] {
        if (editor_ != nullptr) {
            editor_->unitReplaced();
        }
    });
}

Vst3Plugin::~Vst3Plugin() {
    if (host_ != nullptr) { // a host may end an instance that is active: the service thread is at work then
        const std::lock_guard lock(host_->mutex());
        host_->setOnUnitReplaced(nullptr);
    }
    if (editor_ != nullptr) {
        editor_->end();
    }
}

std::shared_ptr<Vst3Editor> Vst3Plugin::editor() {
    if (editor_ == nullptr && host_ != nullptr) {
        auto made = Vst3Editor::create(
            *host_, {.edited = [this](AUParameterAddress address, host::EditPhase phase,
                                      float value) { edited(address, phase, value); },
                     .gestureTold = [this](AUParameterAddress address) { wanted_.release(address); }});
        if (!made) {
            print("QOR Limiter's editor: " + made.error().localizedDescription());
            return nullptr;
        }
        const std::lock_guard lock(host_->mutex()); // a fresh unit may be put in place
        editor_ = std::move(made).value();
    }
    return editor_;
}

void Vst3Plugin::edited(AUParameterAddress address, host::EditPhase phase, float value) {
    if (phase == host::EditPhase::begin) {
        wanted_.hold(address);
    } else if (phase == host::EditPhase::value) {
        wanted_.move(address, value);
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
    return index < kControlCount ? wanted_[index] : 0.0F;
}

void Vst3Plugin::setParameterValue(uint32_t index, float value) {
    if (index < kControlCount && std::isfinite(value)) {
        wanted_.set(index, value);
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
        wanted_.set(i, state.value().values[i].value_or(wanted_[i]));
    }
    if (host_ != nullptr) {
        host::applyState(*host_, state.value()); // at once, for an editor while no block comes
    }
    recalling_.store(true, std::memory_order_release);
}

void Vst3Plugin::activate() {
    recalling_.store(true, std::memory_order_release);
    activateAt(getSampleRate());
}

void Vst3Plugin::activateAt(double sampleRate) {
    if (host_ == nullptr) {
        return;
    }
    const auto activated = host_->activate(sampleRate);
    ready_ = static_cast<bool>(activated);
    if (!ready_) {
        print("QOR Limiter can't run at " + text(sampleRate) +
              " Hz: " + activated.error().localizedDescription());
    }
}

void Vst3Plugin::deactivate() {
    if (host_ != nullptr) {
        host_->deactivate();
    }
}

void Vst3Plugin::sampleRateChanged(double newSampleRate) {
    if (host_ != nullptr && host_->isActive()) {
        activateAt(newSampleRate);
    }
}

void Vst3Plugin::run(const float** inputs, float** outputs, uint32_t frames) {
    if (!ready_) {
        for (int c = 0; c < 2; ++c) {
            std::copy_n(inputs[c], frames, outputs[c]);
        }
        return;
    }
    host_->setBypassed(wanted_[kBypassIndex] > 0.5F);
    const host::ParameterFollower::Values values = wantedValues();
    if (recalling_.exchange(false, std::memory_order_acquire)) {
        follower_.recall(*host_, values);
    }
    host_->render(inputs, outputs, frames, host::SpanEvents(follower_.changes(values)));
}

void Vst3Plugin::applyChanges() {
    const float* noInput[2] = {nullptr, nullptr};
    float* noOutput[2] = {nullptr, nullptr};
    if (ready_) {
        run(noInput, noOutput, 0);
    }
}

host::ParameterFollower::Values Vst3Plugin::wantedValues() const noexcept {
    host::ParameterFollower::Values values{};
    for (std::size_t i = 0; i < kParameterCount; ++i) {
        values[i] = wanted_[i];
    }
    return values;
}

} // namespace qor::vst3

START_NAMESPACE_DISTRHO

Plugin* createPlugin() {
    return new qor::vst3::Vst3Plugin;
}

// In place of the framework's own view, which its plug-in side calls for here.
v3_plugin_view** dpf_plugin_view_create(v3_host_application** context, void* instance, double sampleRate);
v3_plugin_view** dpf_plugin_view_create(v3_host_application** context, void* instance,
                                        double /*sampleRate*/) {
    auto& plugin = static_cast<qor::vst3::Vst3Plugin&>(*static_cast<Plugin*>(instance));
    const auto editor = plugin.editor();
    // One window an instance; a second view would take the host's ear from the one that is shown.
    return editor != nullptr && !editor->isOpen() ? qor::vst3::Vst3View::create(editor, context) : nullptr;
}

END_NAMESPACE_DISTRHO
