#include "Common/PersistentAppData.h"

namespace qor {

Ref<NSUserDefaults> UserDefaults::shared() {
    Ref<NSUserDefaults> suite = NSUserDefaults::initWithSuiteName(sharedContainer);
    (void)unwrap(suite);
    return suite;
}

Ref<NSUserDefaults> UserDefaults::combined() {
    Ref<NSUserDefaults> standard = NSUserDefaults::standardUserDefaults();
    standard->addSuiteNamed(sharedContainer);
    return standard;
}

std::optional<PersistentAppData::Storage> PersistentAppData::initRawValue(std::int64_t rawValue) {
    switch (rawValue) {
    case 0:
        return Storage::defaults;
    case 1:
        return Storage::shared;
    case 2:
        return Storage::combined;
    default:
        return std::nullopt;
    }
}

PersistentAppData::PersistentAppData()
    : defaults(NSUserDefaults::standardUserDefaults()), shared(UserDefaults::shared()),
      combined(UserDefaults::combined()) {}

PersistentAppData& PersistentAppData::sharedInstance() {
    static PersistentAppData instance;
    return instance;
}

NSUserDefaults& PersistentAppData::at(Storage storage) const {
    switch (storage) {
    case Storage::shared:
        return *shared;
    case Storage::combined:
        return *combined;
    case Storage::defaults:
        break;
    }
    return *defaults;
}

void PersistentAppData::setString(const std::string& key, const std::string& value, Storage storage) {
    at(storage).setValue(value, key);
}
std::optional<std::string> PersistentAppData::getString(const std::string& key, Storage from) const {
    return at(from).stringForKey(key);
}

void PersistentAppData::setInteger(const std::string& key, std::int64_t value, Storage storage) {
    at(storage).setInteger(value, key);
}
std::int64_t PersistentAppData::getInteger(const std::string& key, Storage from) const {
    return at(from).integerForKey(key);
}

void PersistentAppData::setFloat(const std::string& key, float value, Storage storage) {
    at(storage).setFloat(value, key);
}
float PersistentAppData::getFloat(const std::string& key, Storage from) const {
    return at(from).floatForKey(key);
}

void PersistentAppData::setBool(const std::string& key, bool value, Storage storage) {
    at(storage).setBool(value, key);
}
bool PersistentAppData::getBool(const std::string& key, Storage from) const {
    return at(from).boolForKey(key);
}

void PersistentAppData::setURL(const std::string& key, const std::optional<URL>& value, Storage storage) {
    at(storage).setURL(value, key);
}
std::optional<URL> PersistentAppData::getUrl(const std::string& key, Storage from) const {
    return at(from).URLForKey(key);
}

void PersistentAppData::setObject(const std::string& key, const std::optional<PropertyList>& value,
                                  Storage storage) {
    at(storage).setObject(value, key);
}
std::optional<PropertyList> PersistentAppData::getObject(const std::string& key, Storage from) const {
    return at(from).objectForKey(key);
}

PropertyListDictionary PersistentAppData::frameToDictionary(const CGRect& frame) {
    return {{"left", static_cast<float>(CGRectGetMinX(frame))},
            {"top", static_cast<float>(CGRectGetMinY(frame))},
            {"width", static_cast<float>(CGRectGetWidth(frame))},
            {"height", static_cast<float>(CGRectGetHeight(frame))}};
}

std::optional<CGRect> PersistentAppData::dictionaryToFrame(const std::string& key) {
    const auto object = sharedInstance().getObject(key, Storage::defaults);
    const PropertyListDictionary* dictionary = object ? object->asDictionary() : nullptr;
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    CGRect frame;
    for (const auto& [name, value] : *dictionary) {
        const auto number = value.asNumber();
        if (!number) {
            return std::nullopt;
        }
        const double coordinate = static_cast<float>(*number);
        if (name == "left") {
            frame.origin.x = coordinate;
        } else if (name == "top") {
            frame.origin.y = coordinate;
        } else if (name == "width") {
            frame.size.width = coordinate;
        } else if (name == "height") {
            frame.size.height = coordinate;
        }
    }
    return frame;
}

namespace {

void printStore(const char* name, const NSUserDefaults& store) {
    print(std::string("PersistentAppData::dumpout() : UserDefaults.") + name + " : ");
    for (const auto& [key, value] : store.dictionaryRepresentation()) {
        print(key + " = " + describe(value));
    }
}

} // namespace

void PersistentAppData::dumpout() const {
    printStore("standard", *NSUserDefaults::standardUserDefaults());
    printStore("shared", *UserDefaults::shared());
    printStore("combined", *UserDefaults::combined());
}

} // namespace qor
