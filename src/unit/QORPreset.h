// The door to presets: from the parameter tree, to and from dictionaries and files.
#pragma once

#include "platform/audio/Audio.h"
#include "unit/PresetPatch.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qor {

/// Hears of every parameter that is read.
class QORPresetDelegate {
public:
    QORPresetDelegate() = default;
    QORPresetDelegate(const QORPresetDelegate&) = delete;
    QORPresetDelegate& operator=(const QORPresetDelegate&) = delete;
    virtual ~QORPresetDelegate() = default;

    virtual void onFoundParameter(std::int64_t group, const std::string& identifier, std::uint64_t address,
                                  float value) = 0;
};

/// Short-lived: made, filled or loaded, and dropped within one operation. Never on the audio thread.
class QORPreset {
public:
    Ref<PresetPatch> patch = makeRef<PresetPatch>();

    QORPreset() = default;
    QORPreset(const QORPreset&) = delete;
    QORPreset& operator=(const QORPreset&) = delete;
    virtual ~QORPreset() = default;

    /// Adds one group per child group of the tree. Twice on one object adds them twice. An absent tree, or
    /// one without children, is printed and changes nothing.
    virtual void makeFrom(const AUParameterGroup* tree);
    /// Reads the dictionary if there is one; see `PresetPatch::fromDictionary`.
    virtual void makeFrom(const std::optional<PropertyListDictionary>& state);
    /// Always gives one.
    virtual std::optional<PropertyListDictionary> getDictionary();
    virtual void save(const URL& url);
    virtual void load(const URL& url);

    /// Shared by the process, without a lock: whoever reads a preset sets it just before. It stays set, and
    /// is absent again once its object is gone.
    inline static Weak<QORPresetDelegate> delegate;
    static void foundParameter(std::int64_t group, const std::string& identifier, std::uint64_t address,
                               float value);
};

} // namespace qor
