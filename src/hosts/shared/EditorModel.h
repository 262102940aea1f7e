// What the editor needs of whoever owns the unit.
#pragma once

#include "hosts/shared/PresetStore.h"
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace qor::host {

/// Main thread, under the lock, unless said otherwise.
class EditorModel {
public:
    EditorModel() = default;
    EditorModel(const EditorModel&) = delete;
    EditorModel& operator=(const EditorModel&) = delete;
    virtual ~EditorModel() = default;

    /// Held by the editor while it works. Any thread.
    virtual std::recursive_mutex& mutex() = 0;
    virtual Ref<QOR_Limiter_Extension_AudioUnit> unit() = 0;
    /// Holds the value to its range; refuses what is not finite.
    virtual Result<void> setParameter(AUParameterAddress address, float value) = 0;
    virtual float parameter(AUParameterAddress address) = 0;
    /// The window opened or closed: while it is open, the editor's `pump` is called regularly.
    virtual void editorDidOpen(bool open) = 0;
    /// Called from the editor's `pump`.
    virtual void pump() = 0;

    virtual std::vector<PresetEntry> presets() = 0;
    virtual Result<void> load(const PresetEntry& preset) = 0;
    /// Keeps the values as they stand as a user preset.
    virtual Result<void> save(const std::string& name) = 0;
    /// Deletes a preset of the user's own for good.
    virtual Result<void> remove(const PresetEntry& preset) { return deletePreset(preset); }
};

/// The model of an editor in the same process as a unit host.
class UnitHostModel final : public EditorModel {
public:
    /// The host must outlive the model.
    explicit UnitHostModel(UnitHost& host) : host_(host) {}

    std::recursive_mutex& mutex() override { return host_.mutex(); }
    Ref<QOR_Limiter_Extension_AudioUnit> unit() override { return host_.unitRef(); }
    Result<void> setParameter(AUParameterAddress address, float value) override {
        return host_.setParameter(address, value);
    }
    float parameter(AUParameterAddress address) override { return host_.parameter(address); }
    void editorDidOpen(bool open) override { host_.setPumpedByHost(open); }
    void pump() override { host_.pump(); }
    std::vector<PresetEntry> presets() override { return listPresets(); }
    Result<void> load(const PresetEntry& preset) override { return loadPreset(host_, preset); }
    Result<void> save(const std::string& name) override {
        if (auto saved = savePreset(name, parameterValues(host_)); !saved) {
            return saved.error();
        }
        return {};
    }

private:
    UnitHost& host_;
};

} // namespace qor::host
