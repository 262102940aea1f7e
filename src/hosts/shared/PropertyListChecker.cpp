#include "hosts/shared/PropertyListChecker.h"

#include "unit/PresetPatch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace qor::host {

namespace {

NSError refusal(std::string why) {
    return {
        NSCocoaErrorDomain, NSPropertyListReadCorruptError, {{NSLocalizedDescriptionKey, std::move(why)}}};
}

/// Walks a state the way the unit's reader does and keeps the first fault.
class Checker {
public:
    explicit Checker(CheckedState& result) : result_(result) {}

    bool root(PropertyListDictionary& dictionary);
    std::string fault;

private:
    bool refuse(const std::string& path, const std::string& found, const std::string& wanted) {
        fault = path + ": found " + found + ", wanted " + wanted + ".";
        return false;
    }
    bool refuseKind(const std::string& path, const PropertyList& value, const std::string& wanted) {
        return refuse(path, "a value of kind " + std::string(kindName(value.kind())), wanted);
    }
    bool integer(const std::string& path, const PropertyList& value, std::int64_t low, std::int64_t high,
                 const std::string& wanted);
    bool string(const std::string& path, const PropertyList& value);
    bool header(const std::string& key, const PropertyList& value, bool& known);
    bool group(const std::string& path, PropertyListDictionary& dictionary);
    bool param(const std::string& path, PropertyListDictionary& dictionary);
    bool parameterValue(const std::string& path, PropertyList& value, const ParameterRow& row);

    CheckedState& result_;
};

bool Checker::integer(const std::string& path, const PropertyList& value, std::int64_t low, std::int64_t high,
                      const std::string& wanted) {
    const auto number = value.asInteger();
    if (!number) {
        return refuseKind(path, value, wanted);
    }
    return (*number >= low && *number <= high) || refuse(path, text(*number), wanted);
}

bool Checker::string(const std::string& path, const PropertyList& value) {
    return value.asString() != nullptr || refuseKind(path, value, "a string");
}

/// The top-level keys apart from the groups.
bool Checker::header(const std::string& key, const PropertyList& value, bool& known) {
    const PresetPatch own;
    constexpr std::int64_t kAny = std::numeric_limits<std::int64_t>::max();
    known = true;
    if (key == "version") {
        return integer(key, value, own.version, own.version, "the integer " + text(own.version));
    }
    if (key == "manufacturer") {
        return integer(key, value, own.manufacturer, own.manufacturer,
                       "the integer " + text(own.manufacturer) + " (this plug-in's maker)");
    }
    if (key == "subtype") {
        return integer(key, value, own.subtype, own.subtype,
                       "the integer " + text(own.subtype) + " (this plug-in)");
    }
    if (key == "number") {
        return integer(key, value, -kAny - 1, kAny, "an integer");
    }
    if (key == "type") {
        return integer(key, value, 0, std::numeric_limits<std::uint32_t>::max(), "an integer of 32 bits");
    }
    if (key == "name") {
        result_.name = value.asString() != nullptr ? *value.asString() : "";
        return string(key, value);
    }
    known = false;
    return true;
}

bool Checker::parameterValue(const std::string& path, PropertyList& value, const ParameterRow& row) {
    const auto number = value.asNumber();
    if (!number) {
        return refuseKind(path, value, "a real or an integer");
    }
    const auto narrowed = static_cast<float>(*number);
    if (!std::isfinite(narrowed)) {
        return refuse(path, text(*number), "a finite number");
    }
    const float held = row.clamped(narrowed);
    if (held != narrowed) {
        result_.notes.push_back(path + ": " + text(narrowed) + " lies outside " + text(row.minimum) + " to " +
                                text(row.maximum) + " of " + row.identifier + "; " + text(held) +
                                " is used.");
        value = held;
    }
    result_.values.at(row.address) = held;
    return true;
}

bool Checker::param(const std::string& path, PropertyListDictionary& dictionary) {
    constexpr auto kLast = static_cast<std::int64_t>(kParameterCount) - 1;
    const std::string wanted = "the address of a parameter, an integer from 0 to " + text(kLast);
    if (const PropertyList* identifier = dictionary.find("identifier")) {
        if (!string(path + " / identifier", *identifier)) {
            return false;
        }
    }
    // Without an address or a value the reader takes 0 for it, which nobody can have meant.
    const PropertyList* address = dictionary.find("address");
    if (address == nullptr) {
        return refuse(path + " / address", "nothing", wanted);
    }
    if (!integer(path + " / address", *address, 0, kLast, wanted)) {
        return false;
    }
    const auto* row = parameterRow(static_cast<AUParameterAddress>(*address->asInteger()));
    PropertyList* value = dictionary.find("value");
    if (value == nullptr) {
        return refuse(path + " / value", "nothing", "a real or an integer");
    }
    return parameterValue(path + " / value", *value, *row);
}

bool Checker::group(const std::string& path, PropertyListDictionary& dictionary) {
    if (const PropertyList* identifier = dictionary.find("identifier")) {
        if (!string(path + " / identifier", *identifier)) {
            return false;
        }
    }
    PropertyList* content = dictionary.find("param");
    if (content == nullptr) {
        return true;
    }
    const std::string paramPath = path + " / param";
    PropertyListDictionary* fields = content->asDictionary();
    return fields != nullptr ? param(paramPath, *fields) : refuseKind(paramPath, *content, "a dictionary");
}

bool Checker::root(PropertyListDictionary& dictionary) {
    for (const auto& [key, value] : dictionary) {
        bool known = false;
        if (!header(key, value, known)) {
            return false;
        }
        if (known || key.find("group") == std::string::npos) {
            continue;
        }
        PropertyListDictionary* fields = dictionary.find(key)->asDictionary();
        if (fields == nullptr) {
            return refuseKind(key, value, "a dictionary");
        }
        if (!group(key, *fields)) {
            return false;
        }
    }
    return true;
}

std::string missingParameters(const CheckedState& state) {
    std::string names;
    for (const ParameterRow& row : kParameterTable) {
        if (!state.values.at(row.address)) {
            names += (names.empty() ? "" : ", ") + std::string(row.identifier);
        }
    }
    return names;
}

} // namespace

Result<CheckedState> checkState(const PropertyListDictionary& dictionary, Completeness completeness) {
    CheckedState state{dictionary, {}, {}, {}};
    Checker checker(state);
    if (!checker.root(state.dictionary)) {
        return refusal(checker.fault);
    }
    const std::string missing = missingParameters(state);
    if (missing.empty()) {
        return state;
    }
    const bool none = std::none_of(state.values.begin(), state.values.end(),
                                   [](const auto& value) { return value.has_value(); });
    if (none) {
        return refusal("group ... / param: found none in any group, wanted at least one. Only a key that is "
                       "exactly \"param\" sets a parameter; \"param 0\" and the like set none.");
    }
    if (completeness == Completeness::allParameters) {
        return refusal("group ... / param: found no value for " + missing +
                       ", wanted all twelve parameters.");
    }
    state.notes.push_back("It leaves as they are: " + missing + ".");
    return state;
}

Result<CheckedState> checkState(const Data& bytes, Completeness completeness) {
    NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
    const auto list = PropertyListSerialization::propertyListWithData(
        bytes, NSPropertyListMutableContainersAndLeaves, format, kStateLimits);
    if (!list) {
        return list.error();
    }
    const PropertyListDictionary* dictionary = list.value().asDictionary();
    if (dictionary == nullptr) {
        return refusal("The whole: found a value of kind " + std::string(kindName(list.value().kind())) +
                       ", wanted a dictionary.");
    }
    return checkState(*dictionary, completeness);
}

} // namespace qor::host
