// The limiter as a plug-in of the packaged framework, which wraps it as VST3.
#pragma once

#include "hosts/shared/ParameterFollower.h"
#include "hosts/shared/PluginRuntime.h"
#include "hosts/shared/UnitHost.h"
#include "hosts/vst3/ControlValues.h"
#include "hosts/vst3/Vst3Editor.h"

#include "DistrhoPlugin.hpp"

#include <atomic>
#include <memory>

namespace qor::vst3 {

/// The twelve parameters by address, then the host's bypass. The framework calls the setters on the main
/// thread and on the audio thread; what they set is taken over at the start of the next block.
class Vst3Plugin final : public DISTRHO::Plugin {
public:
    static constexpr uint32_t kBypassIndex = kParameterCount;
    static constexpr uint32_t kControlCount = kParameterCount + 1;

    Vst3Plugin();
    ~Vst3Plugin() override;

    /// The instance's editor, made on the first call; null if it can't be made. Main thread.
    std::shared_ptr<Vst3Editor> editor();
    /// Passes on what has been set, as a block without frames. Render thread.
    void applyChanges();

protected:
    const char* getLabel() const override { return "QOR_Limiter"; }
    const char* getDescription() const override { return "A stereo peak limiter without latency"; }
    const char* getMaker() const override { return "The QOR Limiter developers"; }
    const char* getLicense() const override { return "ISC"; }
    uint32_t getVersion() const override { return d_version(0, 1, 0); }
    int64_t getUniqueId() const override { return d_cconst('q', 'l', 'm', '1'); }

    void initParameter(uint32_t index, DISTRHO::Parameter& parameter) override;
    void initState(uint32_t index, DISTRHO::State& state) override;
    float getParameterValue(uint32_t index) const override;
    void setParameterValue(uint32_t index, float value) override;
    DISTRHO::String getState(const char* key) const override;
    void setState(const char* key, const char* value) override;

    void activate() override;
    void deactivate() override;
    void run(const float** inputs, float** outputs, uint32_t frames) override;
    void sampleRateChanged(double newSampleRate) override;

private:
    host::ParameterFollower::Values wantedValues() const noexcept;
    void activateAt(double sampleRate);
    void edited(AUParameterAddress address, host::EditPhase phase, float value);

    std::shared_ptr<host::PluginRuntime> runtime_; // outlives the unit
    std::unique_ptr<host::UnitHost> host_;         // absent if the unit could not be made
    std::shared_ptr<Vst3Editor> editor_;           // from the first view on; views know it, too
    bool ready_ = false;                           // to render; otherwise the input goes through
    ControlValues<kControlCount> wanted_;
    host::ParameterFollower follower_;
    std::atomic<bool> recalling_{true}; // what stands in `wanted_` is a state, not a move
};

} // namespace qor::vst3
