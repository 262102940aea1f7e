// The plug-in's state as objects: a patch of groups of parameters, and its dictionary form.
#pragma once

#include "platform/files/Files.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qor {

class PresetGroup;

/// One parameter's value in a preset.
class PresetParam {
public:
    Weak<PresetGroup> group; // the group owns its parameters, so this does not keep it; may be absent
    std::uint64_t address = 0;
    std::string identifier = "parameter";
    float value = 0.0F;

    PropertyListDictionary toDictionary() const;
    /// Reads the known keys, then reports the parameter to the class-wide delegate of `QORPreset`. Stops the
    /// process if a known key holds a value of another kind, or the address is negative.
    void fromDictionary(const PropertyListDictionary& dict);

    /// The keyed coding form; nothing in the system uses it.
    void encodeWithCoder(KeyedArchiver& coder) const;
    void decodeWithCoder(KeyedUnarchiver& coder);
};

/// Parameters that belong together.
class PresetGroup : public std::enable_shared_from_this<PresetGroup> {
public:
    std::int64_t id = 0;
    std::int64_t count = 0; // never updated; the format's "count" is the length of `params`
    std::string identifier = "group";
    std::vector<Ref<PresetParam>> params;

    /// Writes "param 0", "param 1" and so on.
    PropertyListDictionary toDictionary() const;
    /// Reads "identifier" and a key that is exactly "param". What `toDictionary` writes therefore comes back
    /// without parameters: the two are not mirrors. Stops the process like `PresetParam::fromDictionary`.
    /// The group must be held by a `Ref`.
    void fromDictionary(const PropertyListDictionary& dict);

    /// The keyed coding form; nothing in the system uses it.
    void encodeWithCoder(KeyedArchiver& coder) const;
    void decodeWithCoder(KeyedUnarchiver& coder);

private:
    /// `id` becomes the number behind the identifier's last blank, or 0.
    void findGroupNumber();
};

/// The whole of a preset.
class PresetPatch {
public:
    std::int64_t version = 1;
    std::uint32_t type = 0x61756D66;        // "aumf"
    std::int64_t manufacturer = 0x5152564B; // "QRVK"
    std::int64_t subtype = 0x716C6D31;      // "qlm1"
    std::int64_t number = 0;
    std::string name = "QOR Limiter Preset";
    Data data; // unused
    std::vector<Ref<PresetGroup>> groups;

    /// Writes "group 0", "group 1" and so on.
    PropertyListDictionary toDictionary() const;
    /// Empties the groups, then reads in the dictionary's order; every key that holds the text "group"
    /// anywhere is a group. Stops the process if a known key holds a value of another kind, or "type" needs
    /// more than 32 bits.
    void fromDictionary(const PropertyListDictionary& dict);

    /// Writes the XML property list atomically; a failure is printed and leaves the old file.
    void saveToFile(const URL& url) const;
    /// Reads an XML property list. A text that is none is printed and changes nothing; a missing or
    /// unreadable file, or one whose root is no dictionary, stops the process.
    void loadFromFile(const URL& url);
};

} // namespace qor
