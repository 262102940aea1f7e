#include "unit/PresetConversions.h"
#include "unit/PresetPatch.h"
#include "unit/QORPreset.h"

namespace qor {

PropertyListDictionary PresetParam::toDictionary() const {
    return {
        {"address", static_cast<std::int64_t>(address)},
        {"identifier", identifier},
        {"value", value},
    };
}

void PresetParam::fromDictionary(const PropertyListDictionary& dict) {
    for (const auto& [key, content] : dict) {
        if (key == "identifier") {
            identifier = forcedString(content);
        } else if (key == "address") {
            address = forcedUnsigned(content);
        } else if (key == "value") {
            value = forcedFloat(content);
        }
    }
    const Ref<PresetGroup> owner = group.lock();
    QORPreset::foundParameter(owner ? owner->id : 0, identifier, address, value);
}

void PresetParam::encodeWithCoder(KeyedArchiver& coder) const {
    coder.encodeObject(group.lock(), "group");
    coder.encode(static_cast<std::int64_t>(address), "address");
    coder.encode(identifier, "identifier");
    coder.encode(value, "value");
}

void PresetParam::decodeWithCoder(KeyedUnarchiver& coder) {
    group = coder.decodeObject<PresetGroup>("group");
    if (const PropertyList* found = coder.decode("address")) {
        address = static_cast<std::uint64_t>(found->asInteger().value_or(0));
    }
    if (const PropertyList* found = coder.decode("identifier");
        found != nullptr && found->asString() != nullptr) {
        identifier = *found->asString();
    }
    if (const PropertyList* found = coder.decode("value")) {
        value = static_cast<float>(found->asNumber().value_or(0.0));
    }
}

PropertyListDictionary PresetGroup::toDictionary() const {
    PropertyListDictionary dictionary = {
        {"identifier", identifier},
        {"count", static_cast<std::int64_t>(params.size())},
    };
    std::uint64_t index = 0;
    for (const Ref<PresetParam>& param : params) {
        dictionary.append("param " + text(index++), param->toDictionary());
    }
    return dictionary;
}

void PresetGroup::fromDictionary(const PropertyListDictionary& dict) {
    params.clear();
    for (const auto& [key, value] : dict) {
        if (key == "identifier") {
            identifier = forcedString(value);
            findGroupNumber();
        } else if (key == "param") {
            params.push_back(makeRef<PresetParam>());
            params.back()->group = weak_from_this();
            params.back()->fromDictionary(forcedDictionary(value));
        }
    }
}

void PresetGroup::findGroupNumber() {
    const std::size_t blank = identifier.rfind(' ');
    const std::string last = blank == std::string::npos ? identifier : identifier.substr(blank + 1);
    std::int64_t parsed = 0;
    id = parseInt64(last, parsed) ? parsed : 0;
}

void PresetGroup::encodeWithCoder(KeyedArchiver& coder) const {
    coder.encode(id, "id");
    coder.encode(count, "count");
    coder.encode(identifier, "identifier");
    coder.encodeObjects(params, "params");
}

void PresetGroup::decodeWithCoder(KeyedUnarchiver& coder) {
    if (const PropertyList* found = coder.decode("id")) {
        id = found->asInteger().value_or(0);
    }
    if (const PropertyList* found = coder.decode("count")) {
        count = found->asInteger().value_or(0);
    }
    if (const PropertyList* found = coder.decode("identifier");
        found != nullptr && found->asString() != nullptr) {
        identifier = *found->asString();
    }
    params = coder.decodeObjects<PresetParam>("params");
}

} // namespace qor
