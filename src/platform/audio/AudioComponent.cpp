#include "platform/audio/AudioComponent.h"

#include "platform/audio/AUAudioUnit.h"
#include "platform/audio/SystemPeakLimiter.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace platform {

namespace {

struct Entry {
    std::uint64_t token;
    AudioComponent component;
    AudioUnitFactory factory;
};

struct Registry {
    std::mutex mutex;
    std::uint64_t lastToken = 0;
    std::vector<Entry> entries; // in the order of registration

    Registry() {
        entries.push_back({0, SystemPeakLimiter::registeredComponent(),
                           [](const AudioComponentDescription& description,
                              AudioComponentInstantiationOptions options) -> Result<Ref<AUAudioUnit>> {
                               auto limiter = SystemPeakLimiter::make(description, options);
                               if (!limiter) {
                                   return limiter.error();
                               }
                               return Ref<AUAudioUnit>(std::move(limiter).value());
                           }});
    }

    static Registry& shared() {
        static Registry registry;
        return registry;
    }

    /// The latest entry for the description; flags don't tell kinds apart.
    std::optional<Entry> find(const AudioComponentDescription& wanted) {
        const std::lock_guard lock(mutex);
        const auto found = std::find_if(entries.rbegin(), entries.rend(), [&](const Entry& entry) {
            const auto& has = entry.component.description;
            return has.componentType == wanted.componentType &&
                   has.componentSubType == wanted.componentSubType &&
                   has.componentManufacturer == wanted.componentManufacturer;
        });
        return found == entries.rend() ? std::nullopt : std::optional<Entry>(*found);
    }
};

std::string codeText(std::uint32_t code) {
    std::string characters;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto byte = static_cast<char>((code >> shift) & 0xFFU);
        if (byte < ' ' || byte > '~') {
            constexpr const char* kDigits = "0123456789abcdef";
            std::string digits = "0x";
            for (int nibble = 28; nibble >= 0; nibble -= 4) {
                digits += kDigits[(code >> nibble) & 0xFU];
            }
            return digits;
        }
        characters += byte;
    }
    return characters;
}

} // namespace

std::string text(const AudioComponentDescription& description) {
    return codeText(description.componentType) + " " + codeText(description.componentSubType) + " " +
           codeText(description.componentManufacturer);
}

AudioComponentRegistration::AudioComponentRegistration(AudioComponent component, AudioUnitFactory factory) {
    auto& registry = Registry::shared();
    const std::lock_guard lock(registry.mutex);
    token_ = ++registry.lastToken;
    registry.entries.push_back({token_, std::move(component), std::move(factory)});
}

AudioComponentRegistration::~AudioComponentRegistration() {
    auto& registry = Registry::shared();
    const std::lock_guard lock(registry.mutex);
    std::erase_if(registry.entries, [this](const Entry& entry) { return entry.token == token_; });
}

std::optional<AudioComponent> audioComponentFind(const AudioComponentDescription& description) {
    auto entry = Registry::shared().find(description);
    return entry ? std::optional<AudioComponent>(std::move(entry->component)) : std::nullopt;
}

Result<Ref<AUAudioUnit>> instantiateAudioUnit(const AudioComponentDescription& description,
                                              AudioComponentInstantiationOptions options) {
    const auto entry = Registry::shared().find(description);
    if (!entry) {
        return NSError(NSOSStatusErrorDomain, kAudioComponentErr_NotFound,
                       {{NSLocalizedDescriptionKey, "No audio unit is registered as \"" + text(description) +
                                                        "\": check its type, subtype and maker."}});
    }
    return entry->factory(description, options);
}

} // namespace platform
