// The values that property lists are made of.
#pragma once

#include "platform/files/Data.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

class PropertyList;

using PropertyListArray = std::vector<PropertyList>;

/// Values by text keys, in the order in which the keys came. Setting a key that exists keeps its place.
class PropertyListDictionary {
public:
    struct Entry;

    PropertyListDictionary();
    PropertyListDictionary(std::initializer_list<Entry> entries);
    PropertyListDictionary(const PropertyListDictionary& other);
    PropertyListDictionary(PropertyListDictionary&& other) noexcept;
    PropertyListDictionary& operator=(const PropertyListDictionary& other);
    PropertyListDictionary& operator=(PropertyListDictionary&& other) noexcept;
    ~PropertyListDictionary();

    std::size_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    const Entry* begin() const noexcept;
    const Entry* end() const noexcept;

    /// Null if there is no such key. Valid until the dictionary changes.
    const PropertyList* find(std::string_view key) const noexcept;
    PropertyList* find(std::string_view key) noexcept;
    void set(std::string_view key, PropertyList value);
    /// Adds an entry whose key is known to be new, without a search.
    void append(std::string key, PropertyList value);
    void remove(std::string_view key);

    bool operator==(const PropertyListDictionary& other) const;

private:
    std::vector<Entry> entries_;
};

/// A point in time, in seconds since the start of 2001 in UTC. The XML form keeps whole seconds.
struct PropertyListDate {
    double secondsSince2001 = 0.0;
    bool operator==(const PropertyListDate&) const = default;
};

/// One value of a property list. The `as...` operations give the value if it is of exactly that kind.
class PropertyList {
public:
    enum class Kind : std::uint8_t { boolean, integer, real, string, data, date, array, dictionary };

    PropertyList(bool value) : value_(value) {}                              // NOLINT: a value is a list
    PropertyList(std::int64_t value) : value_(value) {}                      // NOLINT
    PropertyList(int value) : value_(static_cast<std::int64_t>(value)) {}    // NOLINT
    PropertyList(double value) : value_(value) {}                            // NOLINT
    PropertyList(float value) : value_(static_cast<double>(value)) {}        // NOLINT
    PropertyList(std::string value) : value_(std::move(value)) {}            // NOLINT
    PropertyList(const char* value) : value_(std::string(value)) {}          // NOLINT
    PropertyList(Data value) : value_(std::move(value)) {}                   // NOLINT
    PropertyList(PropertyListDate value) : value_(value) {}                  // NOLINT
    PropertyList(PropertyListArray value) : value_(std::move(value)) {}      // NOLINT
    PropertyList(PropertyListDictionary value) : value_(std::move(value)) {} // NOLINT

    Kind kind() const noexcept { return static_cast<Kind>(value_.index()); }

    std::optional<bool> asBool() const noexcept { return copyOf<bool>(); }
    std::optional<std::int64_t> asInteger() const noexcept { return copyOf<std::int64_t>(); }
    /// A real, or an integer as one.
    std::optional<double> asNumber() const noexcept;
    std::optional<PropertyListDate> asDate() const noexcept { return copyOf<PropertyListDate>(); }
    const std::string* asString() const noexcept { return std::get_if<std::string>(&value_); }
    const Data* asData() const noexcept { return std::get_if<Data>(&value_); }
    const PropertyListArray* asArray() const noexcept { return std::get_if<PropertyListArray>(&value_); }
    const PropertyListDictionary* asDictionary() const noexcept {
        return std::get_if<PropertyListDictionary>(&value_);
    }
    PropertyListDictionary* asDictionary() noexcept { return std::get_if<PropertyListDictionary>(&value_); }

    bool operator==(const PropertyList& other) const = default;

private:
    template <class T>
    std::optional<T> copyOf() const noexcept {
        const T* found = std::get_if<T>(&value_);
        return found == nullptr ? std::nullopt : std::optional<T>(*found);
    }

    std::variant<bool, std::int64_t, double, std::string, Data, PropertyListDate, PropertyListArray,
                 PropertyListDictionary>
        value_;
};

struct PropertyListDictionary::Entry {
    std::string key;
    PropertyList value;
    bool operator==(const Entry&) const = default;
};

/// "boolean", "integer", "real", "string", "data", "date", "array", "dictionary".
std::string_view kindName(PropertyList::Kind kind) noexcept;

/// A value as one line for people: texts in quotes only inside arrays and dictionaries, "{a = 1, b = 2}",
/// "[1, 2]", "<5 bytes>".
std::string describe(const PropertyList& value);

} // namespace platform
