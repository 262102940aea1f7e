// The user defaults: typed values by key, in property-list files below the user's configuration directory.
#pragma once

#include "platform/core/Ref.h"
#include "platform/files/PropertyList.h"
#include "platform/files/URL.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace platform {

class DefaultsDomain;

/// One set of defaults: a domain of its own, which takes the writes, and a search list behind it for the
/// reads. Any thread. The file of a domain is "DIRECTORY/NAME.plist" with the bundle's directory below the
/// configuration directory; it is found anew on each call. Nothing needs to be flushed.
class NSUserDefaults {
public:
    /// The program's own defaults; one object per process.
    static Ref<NSUserDefaults> standardUserDefaults();
    /// The defaults of a suite; null if the name is empty, holds a slash or is the program's own identifier.
    static Ref<NSUserDefaults> initWithSuiteName(const std::string& name);

    /// Adds a suite at the end of the search list; one that is there already stays where it is.
    void addSuiteNamed(const std::string& name);
    void removeSuiteNamed(const std::string& name);

    void setValue(std::optional<PropertyList> value, const std::string& forKey);
    void setObject(std::optional<PropertyList> value, const std::string& forKey);
    void setInteger(std::int64_t value, const std::string& forKey);
    void setFloat(float value, const std::string& forKey);
    void setBool(bool value, const std::string& forKey);
    /// A file's location is stored as its path, any other as its absolute text.
    void setURL(const std::optional<URL>& value, const std::string& forKey);
    void removeObjectForKey(const std::string& key);

    std::optional<PropertyList> objectForKey(const std::string& key) const;
    /// A string, or a number or boolean as its text.
    std::optional<std::string> stringForKey(const std::string& key) const;
    /// A number, truncated and held within 64 bits; a boolean as 0 or 1; the number that a string is; 0 else.
    std::int64_t integerForKey(const std::string& key) const;
    float floatForKey(const std::string& key) const;
    /// A boolean; a number other than 0; a string that is a number other than 0, "YES" or "true".
    bool boolForKey(const std::string& key) const;
    std::optional<URL> URLForKey(const std::string& key) const;

    /// All values that a read can find, each key with the value that a read of it gives.
    PropertyListDictionary dictionaryRepresentation() const;

    explicit NSUserDefaults(std::string domainName) : domainName_(std::move(domainName)) {}

private:
    std::vector<Ref<DefaultsDomain>> searchList() const;

    const std::string domainName_;
    mutable std::mutex mutex_;
    std::vector<std::string> suites_;
};

} // namespace platform
