// A small store over the user defaults: one instance, three storages, typed setters and getters.
#pragma once

#include "platform/draw/CGGeometry.h"
#include "platform/files/Files.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qor {

/// The application group: the suite that the plug-in shares with its companion applications.
inline std::string sharedContainer = "group.org.qrvk.qor-limiter";

/// The further defaults of the process.
struct UserDefaults {
    /// The suite `sharedContainer`. The process stops if it can't be opened.
    static Ref<NSUserDefaults> shared();
    /// The standard defaults, after the suite has been added to them.
    static Ref<NSUserDefaults> combined();
};

/// Nothing in the system keeps anything here; it stands ready. Any thread. A write is on the disk when it
/// returns.
class PersistentAppData {
public:
    enum class Storage : std::int64_t { defaults = 0, shared = 1, combined = 2 };
    /// Absent for any other number.
    static std::optional<Storage> initRawValue(std::int64_t rawValue);

    const Ref<NSUserDefaults> defaults;
    const Ref<NSUserDefaults> shared;
    const Ref<NSUserDefaults> combined; // the same object as `defaults`

    /// The one instance, made on first use.
    static PersistentAppData& sharedInstance();

    void setString(const std::string& key, const std::string& value, Storage storage = Storage::defaults);
    std::optional<std::string> getString(const std::string& key, Storage from = Storage::defaults) const;
    void setInteger(const std::string& key, std::int64_t value, Storage storage = Storage::defaults);
    std::int64_t getInteger(const std::string& key, Storage from = Storage::defaults) const;
    void setFloat(const std::string& key, float value, Storage storage = Storage::defaults);
    float getFloat(const std::string& key, Storage from = Storage::defaults) const;
    void setBool(const std::string& key, bool value, Storage storage = Storage::defaults);
    bool getBool(const std::string& key, Storage from = Storage::defaults) const;
    /// An absent location or value is passed on as absent, which removes the key.
    void setURL(const std::string& key, const std::optional<URL>& value, Storage storage = Storage::defaults);
    std::optional<URL> getUrl(const std::string& key, Storage from = Storage::defaults) const;
    void setObject(const std::string& key, const std::optional<PropertyList>& value,
                   Storage storage = Storage::defaults);
    std::optional<PropertyList> getObject(const std::string& key, Storage from = Storage::defaults) const;

    /// "left", "top", "width" and "height" as 32-bit floats.
    static PropertyListDictionary frameToDictionary(const CGRect& frame);
    /// Reads such a dictionary from the standard defaults: what is missing is 0; absent if there is none or a
    /// value is no number.
    static std::optional<CGRect> dictionaryToFrame(const std::string& key);

    /// Prints what each of the three storages finds, one line per key.
    void dumpout() const;

private:
    PersistentAppData();

    NSUserDefaults& at(Storage storage) const;
};

} // namespace qor
