// What the LV2 editor works on: a unit of its own that follows the ports, since the plug-in's is out of
// reach.
#pragma once

#include "hosts/lv2/Lv2Ports.h"
#include "hosts/shared/EditorModel.h"

#include <array>
#include <memory>

namespace qor::lv2 {

/// A unit that renders nothing and shows the meters that arrive by the ports.
class MeterUnit final : public QOR_Limiter_Extension_AudioUnit {
public:
    static Result<Ref<MeterUnit>> make();

    float getDynamicsValue1() override { return meters[0]; }
    float getDynamicsValue2() override { return meters[1]; }
    float getPeakValue1() override { return meters[2]; }
    float getPeakValue2() override { return meters[3]; }

    /// In the order of `kMeterPorts`.
    std::array<float, kMeterPorts.size()> meters{kMeterPorts[0].rest, kMeterPorts[1].rest,
                                                 kMeterPorts[2].rest, kMeterPorts[3].rest};

private:
    MeterUnit();
};

/// Main thread.
class Lv2EditorModel final : public host::EditorModel {
public:
    explicit Lv2EditorModel(Ref<MeterUnit> unit) : unit_(std::move(unit)) {}

    std::recursive_mutex& mutex() override { return mutex_; }
    Ref<QOR_Limiter_Extension_AudioUnit> unit() override { return unit_; }
    Result<void> setParameter(AUParameterAddress address, float value) override;
    float parameter(AUParameterAddress address) override;
    void editorDidOpen(bool /*open*/) override {}
    void pump() override {}
    std::vector<host::PresetEntry> presets() override { return host::listPresets(); }
    Result<void> load(const host::PresetEntry& preset) override;
    Result<void> save(const std::string& name) override;

    /// A port has this value now. What is no port of ours is left out.
    void portIs(std::uint32_t port, float value);

private:
    Ref<MeterUnit> unit_;
    std::recursive_mutex mutex_;
};

} // namespace qor::lv2
