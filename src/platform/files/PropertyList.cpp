#include "platform/files/PropertyList.h"

#include "platform/core/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform {

PropertyListDictionary::PropertyListDictionary() = default;
PropertyListDictionary::PropertyListDictionary(std::initializer_list<Entry> entries) {
    for (const Entry& entry : entries) {
        set(entry.key, entry.value);
    }
}
PropertyListDictionary::PropertyListDictionary(const PropertyListDictionary& other) = default;
PropertyListDictionary::PropertyListDictionary(PropertyListDictionary&& other) noexcept = default;
PropertyListDictionary& PropertyListDictionary::operator=(const PropertyListDictionary& other) = default;
PropertyListDictionary& PropertyListDictionary::operator=(PropertyListDictionary&& other) noexcept = default;
PropertyListDictionary::~PropertyListDictionary() = default;

std::size_t PropertyListDictionary::size() const noexcept {
    return entries_.size();
}
const PropertyListDictionary::Entry* PropertyListDictionary::begin() const noexcept {
    return entries_.data();
}
const PropertyListDictionary::Entry* PropertyListDictionary::end() const noexcept {
    return entries_.data() + entries_.size();
}

const PropertyList* PropertyListDictionary::find(std::string_view key) const noexcept {
    const auto found = std::find_if(begin(), end(), [key](const Entry& entry) { return entry.key == key; });
    return found == end() ? nullptr : &found->value;
}

PropertyList* PropertyListDictionary::find(std::string_view key) noexcept {
    return const_cast<PropertyList*>(std::as_const(*this).find(key));
}

void PropertyListDictionary::set(std::string_view key, PropertyList value) {
    if (PropertyList* found = find(key)) {
        *found = std::move(value);
    } else {
        entries_.push_back({std::string(key), std::move(value)});
    }
}

void PropertyListDictionary::append(std::string key, PropertyList value) {
    entries_.push_back({std::move(key), std::move(value)});
}

void PropertyListDictionary::remove(std::string_view key) {
    std::erase_if(entries_, [key](const Entry& entry) { return entry.key == key; });
}

bool PropertyListDictionary::operator==(const PropertyListDictionary& other) const {
    return entries_ == other.entries_;
}

std::optional<double> PropertyList::asNumber() const noexcept {
    if (const auto* real = std::get_if<double>(&value_)) {
        return *real;
    }
    const auto integer = asInteger();
    return integer ? std::optional(static_cast<double>(*integer)) : std::nullopt;
}

std::string_view kindName(PropertyList::Kind kind) noexcept {
    constexpr std::array<std::string_view, 8> kNames = {"boolean", "integer", "real",  "string",
                                                        "data",    "date",    "array", "dictionary"};
    return kNames[static_cast<std::size_t>(kind)];
}

namespace {

std::string describeInside(const PropertyList& value) {
    const std::string* string = value.asString();
    return string == nullptr ? describe(value) : '"' + *string + '"';
}

} // namespace

std::string describe(const PropertyList& value) {
    switch (value.kind()) {
    case PropertyList::Kind::boolean:
        return text(*value.asBool());
    case PropertyList::Kind::integer:
        return text(*value.asInteger());
    case PropertyList::Kind::real:
        return text(*value.asNumber());
    case PropertyList::Kind::string:
        return *value.asString();
    case PropertyList::Kind::data:
        return "<" + std::to_string(value.asData()->size()) + " bytes>";
    case PropertyList::Kind::date:
        return text(value.asDate()->secondsSince2001) + " s since 2001";
    case PropertyList::Kind::array: {
        std::string result = "[";
        for (const PropertyList& item : *value.asArray()) {
            result += (result.size() > 1 ? ", " : "") + describeInside(item);
        }
        return result + "]";
    }
    case PropertyList::Kind::dictionary:
        break;
    }
    std::string result = "{";
    for (const auto& [key, item] : *value.asDictionary()) {
        result += (result.size() > 1 ? ", " : "") + key + " = " + describeInside(item);
    }
    return result + "}";
}

} // namespace platform
