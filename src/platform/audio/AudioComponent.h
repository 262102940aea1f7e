// Component descriptions, and the registry that turns one into an audio unit.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Ref.h"
#include "platform/core/Result.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

class AUAudioUnit;

/// The code that four characters stand for, the first one in the highest byte.
constexpr std::uint32_t fourCharacterCode(const char (&characters)[5]) noexcept {
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) {
        code = (code << 8) | static_cast<unsigned char>(characters[i]);
    }
    return code;
}

inline constexpr std::uint32_t kAudioUnitType_Effect = fourCharacterCode("aufx");
inline constexpr std::uint32_t kAudioUnitSubType_PeakLimiter = fourCharacterCode("lmtr");
inline constexpr std::uint32_t kAudioUnitManufacturer_Apple = fourCharacterCode("appl");

/// Names a kind of audio unit.
struct AudioComponentDescription {
    std::uint32_t componentType = 0;
    std::uint32_t componentSubType = 0;
    std::uint32_t componentManufacturer = 0;
    std::uint32_t componentFlags = 0;
    std::uint32_t componentFlagsMask = 0;

    friend bool operator==(const AudioComponentDescription&, const AudioComponentDescription&) = default;
};

/// The system's peak limiter.
inline constexpr AudioComponentDescription kSystemPeakLimiter{
    kAudioUnitType_Effect, kAudioUnitSubType_PeakLimiter, kAudioUnitManufacturer_Apple, 0, 0};

/// "aufx lmtr appl"; a code with bytes that don't print stands in hexadecimal digits.
std::string text(const AudioComponentDescription& description);

/// Bits by which a unit may be made in a process of its own; nothing here does so.
using AudioComponentInstantiationOptions = std::uint32_t;

/// What a registered kind of unit tells about itself.
struct AudioComponent {
    AudioComponentDescription description;
    std::string name;             // "Maker: Unit"
    std::string manufacturerName; // of people, not a code
    std::uint32_t version = 0;    // 16 bits major, 8 bits minor, 8 bits patch
};

/// Makes a unit of the registered kind, or tells why it can't.
using AudioUnitFactory =
    Block<Result<Ref<AUAudioUnit>>(const AudioComponentDescription&, AudioComponentInstantiationOptions)>;

/// Keeps a kind of unit registered while it lives. Of two registrations for one description the later one
/// holds, so a test can put its own unit in the place of a system unit. Configuration thread; any number of
/// threads may look up at once.
class AudioComponentRegistration {
public:
    AudioComponentRegistration(AudioComponent component, AudioUnitFactory factory);
    ~AudioComponentRegistration();
    AudioComponentRegistration(const AudioComponentRegistration&) = delete;
    AudioComponentRegistration& operator=(const AudioComponentRegistration&) = delete;

private:
    std::uint64_t token_;
};

/// The registered component of that type, subtype and manufacturer, if there is one. The system's own units
/// are always registered.
std::optional<AudioComponent> audioComponentFind(const AudioComponentDescription& description);

inline constexpr long kAudioComponentErr_NotFound = -3000;

/// A new unit of the described kind. Fails with kAudioComponentErr_NotFound for an unknown description and
/// with the factory's error otherwise. Allocates.
Result<Ref<AUAudioUnit>>
instantiateAudioUnit(const AudioComponentDescription& description,
                     AudioComponentInstantiationOptions options = AudioComponentInstantiationOptions{});

} // namespace platform
