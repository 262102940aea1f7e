#include "platform/files/NSUserDefaults.h"

#include "platform/core/Text.h"
#include "platform/files/Bundle.h"
#include "platform/files/DefaultsDomain.h"
#include "platform/files/Environment.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace platform {
namespace {

Ref<DefaultsDomain> domainNamed(const std::string& name) {
    // Without a home directory nothing can be kept: the path leads nowhere and the domain says so on a write.
    const std::string directory = configDirectory().value_or("/nonexistent");
    return DefaultsDomain::at(directory + "/" + Bundle::main().directoryName() + "/" + name + ".plist");
}

/// A value as a number, in the generous manner of the typed reads.
double numberOf(const PropertyList& value) {
    if (const auto number = value.asNumber()) {
        return *number;
    }
    if (const auto boolean = value.asBool()) {
        return *boolean ? 1.0 : 0.0;
    }
    double parsed = 0.0;
    const std::string* string = value.asString();
    return string != nullptr && parseDouble(*string, parsed) ? parsed : 0.0;
}

std::int64_t integerOf(double number) {
    constexpr double kLimit = 9223372036854775808.0; // 2^63
    if (std::isnan(number)) {
        return 0;
    }
    if (number >= kLimit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return number < -kLimit ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(number);
}

} // namespace

Ref<NSUserDefaults> NSUserDefaults::standardUserDefaults() {
    static const Ref<NSUserDefaults> standard = makeRef<NSUserDefaults>(Bundle::main().bundleIdentifier());
    return standard;
}

Ref<NSUserDefaults> NSUserDefaults::initWithSuiteName(const std::string& name) {
    if (name.empty() || name.find('/') != std::string::npos || name == Bundle::main().bundleIdentifier()) {
        return nullptr;
    }
    return makeRef<NSUserDefaults>(name);
}

void NSUserDefaults::addSuiteNamed(const std::string& name) {
    const std::lock_guard lock(mutex_);
    if (std::find(suites_.begin(), suites_.end(), name) == suites_.end()) {
        suites_.push_back(name);
    }
}

void NSUserDefaults::removeSuiteNamed(const std::string& name) {
    const std::lock_guard lock(mutex_);
    std::erase(suites_, name);
}

std::vector<Ref<DefaultsDomain>> NSUserDefaults::searchList() const {
    const std::lock_guard lock(mutex_);
    std::vector<Ref<DefaultsDomain>> domains = {domainNamed(domainName_)};
    for (const std::string& suite : suites_) {
        domains.push_back(domainNamed(suite));
    }
    return domains;
}

void NSUserDefaults::setObject(std::optional<PropertyList> value, const std::string& forKey) {
    domainNamed(domainName_)->setValue(forKey, std::move(value));
}
void NSUserDefaults::setValue(std::optional<PropertyList> value, const std::string& forKey) {
    setObject(std::move(value), forKey);
}
void NSUserDefaults::setInteger(std::int64_t value, const std::string& forKey) {
    setObject(value, forKey);
}
void NSUserDefaults::setFloat(float value, const std::string& forKey) {
    setObject(value, forKey);
}
void NSUserDefaults::setBool(bool value, const std::string& forKey) {
    setObject(value, forKey);
}
void NSUserDefaults::removeObjectForKey(const std::string& key) {
    setObject(std::nullopt, key);
}
void NSUserDefaults::setURL(const std::optional<URL>& value, const std::string& forKey) {
    if (!value) {
        setObject(std::nullopt, forKey);
    } else {
        setObject(value->isFileURL() ? value->path() : value->absoluteString(), forKey);
    }
}

std::optional<PropertyList> NSUserDefaults::objectForKey(const std::string& key) const {
    for (const Ref<DefaultsDomain>& domain : searchList()) {
        if (auto value = domain->value(key)) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<std::string> NSUserDefaults::stringForKey(const std::string& key) const {
    const auto value = objectForKey(key);
    if (!value) {
        return std::nullopt;
    }
    if (const std::string* string = value->asString()) {
        return *string;
    }
    if (const auto boolean = value->asBool()) {
        return *boolean ? "1" : "0";
    }
    return value->asNumber() ? std::optional(describe(*value)) : std::nullopt;
}

std::int64_t NSUserDefaults::integerForKey(const std::string& key) const {
    const auto value = objectForKey(key);
    if (!value) {
        return 0;
    }
    std::int64_t parsed = 0;
    if (const std::string* string = value->asString(); string != nullptr && parseInt64(*string, parsed)) {
        return parsed;
    }
    return value->asInteger().value_or(integerOf(numberOf(*value)));
}

float NSUserDefaults::floatForKey(const std::string& key) const {
    const auto value = objectForKey(key);
    return value ? static_cast<float>(numberOf(*value)) : 0.0F;
}

bool NSUserDefaults::boolForKey(const std::string& key) const {
    const auto value = objectForKey(key);
    if (!value) {
        return false;
    }
    constexpr std::array<std::string_view, 6> kYes = {"YES", "Yes", "yes", "true", "TRUE", "True"};
    const std::string* string = value->asString();
    return numberOf(*value) != 0.0 ||
           (string != nullptr && std::find(kYes.begin(), kYes.end(), *string) != kYes.end());
}

std::optional<URL> NSUserDefaults::URLForKey(const std::string& key) const {
    const auto value = objectForKey(key);
    const std::string* string = value ? value->asString() : nullptr;
    if (string == nullptr) {
        return std::nullopt;
    }
    if (!string->starts_with('/')) {
        if (auto url = URL::initWithString(*string)) {
            return url;
        }
    }
    return URL::fileURLWithPath(*string);
}

PropertyListDictionary NSUserDefaults::dictionaryRepresentation() const {
    PropertyListDictionary result;
    for (const Ref<DefaultsDomain>& domain : searchList()) {
        for (const auto& [key, value] : domain->dictionary()) {
            if (result.find(key) == nullptr) {
                result.append(key, value);
            }
        }
    }
    return result;
}

} // namespace platform
