#include "unit/PresetPatch.h"

#include "unit/PresetConversions.h"

namespace qor {

PropertyListDictionary PresetPatch::toDictionary() const {
    PropertyListDictionary dictionary = {
        {"version", version},
        {"type", static_cast<std::int64_t>(type)},
        {"manufacturer", manufacturer},
        {"subtype", subtype},
        {"number", number},
        {"name", name},
        {"count", static_cast<std::int64_t>(groups.size())},
    };
    std::uint64_t index = 0;
    for (const Ref<PresetGroup>& group : groups) {
        dictionary.append("group " + text(index++), group->toDictionary());
    }
    return dictionary;
}

void PresetPatch::fromDictionary(const PropertyListDictionary& dict) {
    groups.clear();
    for (const auto& [key, value] : dict) {
        if (key == "version") {
            version = forcedInteger(value);
        } else if (key == "manufacturer") {
            manufacturer = forcedInteger(value);
        } else if (key == "subtype") {
            subtype = forcedInteger(value);
        } else if (key == "number") {
            number = forcedInteger(value);
        } else if (key == "type") {
            type = forcedUnsigned32(value);
        } else if (key == "name") {
            name = forcedString(value);
        } else if (key.find("group") != std::string::npos) {
            groups.push_back(makeRef<PresetGroup>());
            groups.back()->fromDictionary(forcedDictionary(value));
        }
    }
}

void PresetPatch::saveToFile(const URL& url) const {
    const auto bytes =
        PropertyListSerialization::dataWithPropertyList(toDictionary(), NSPropertyListXMLFormat_v1_0, 0);
    if (!bytes) {
        print("PresetPatch::FEHLER: Die Daten konnten nicht serialisiert werden.");
        return;
    }
    const auto written = writeAtomically(bytes.value(), url);
    if (!written) {
        print("PresetPatch::FEHLER: Die Daten konnten nicht gespeichert werden. (" +
              written.error().debugDescription() + ")");
    }
}

void PresetPatch::loadFromFile(const URL& url) {
    const FileManager& files = FileManager::defaultManager();
    if (!files.fileExistsAtPath(url.path())) {
        fatalError("AUPresetFile::ERROR: The path " + url.path() + " does not exist.");
    }
    const auto contents = files.contentsAtPath(url.path());
    const Data& bytes = unwrap(contents);
    NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
    const auto list = PropertyListSerialization::propertyListWithData(
        bytes, NSPropertyListMutableContainersAndLeaves, format);
    if (!list) {
        print("AUPresetFile::FEHLER: Die Datei konnte nicht eingelesen werden: " +
              list.error().debugDescription() + ", Format: " + text(format));
        return;
    }
    fromDictionary(forcedDictionary(list.value()));
}

} // namespace qor
