#include "hosts/shared/StateChunk.h"

#include "unit/PresetPatch.h"

namespace qor::host {

namespace {

constexpr const char* kGroupIdentifier = "kGlobalParameters";

std::string groupKey(AUParameterAddress address) {
    return "group " + std::string(address < 10 ? "0" : "") + text(static_cast<std::uint64_t>(address));
}

} // namespace

ParameterValues defaultParameterValues() noexcept {
    ParameterValues values{};
    for (const ParameterRow& row : kParameterTable) {
        values.at(row.address) = row.defaultValue;
    }
    return values;
}

ParameterValues parameterValues(const UnitHost& host) noexcept {
    ParameterValues values{};
    for (const ParameterRow& row : kParameterTable) {
        values.at(row.address) = row.clamped(host.parameter(row.address));
    }
    return values;
}

PropertyListDictionary stateDictionary(const ParameterValues& values, const std::string& name) {
    PresetPatch patch;
    patch.name = name;
    PropertyListDictionary dictionary = patch.toDictionary();
    dictionary.set("count", static_cast<std::int64_t>(kParameterCount));
    const auto add = [&](const ParameterRow& row) {
        PresetParam param;
        param.address = row.address;
        param.identifier = row.identifier;
        param.value = values.at(row.address);
        dictionary.append(groupKey(row.address), PropertyListDictionary{{"identifier", kGroupIdentifier},
                                                                        {"count", 1},
                                                                        {"param", param.toDictionary()}});
    };
    // The reader goes by this order, and a threshold takes the law of the knee that stands when it is set.
    add(kParameterTable.at(kLimiterKnee));
    for (const ParameterRow& row : kParameterTable) {
        if (row.address != kLimiterKnee) {
            add(row);
        }
    }
    return dictionary;
}

Result<Data> stateBytes(const ParameterValues& values, const std::string& name) {
    return PropertyListSerialization::dataWithPropertyList(stateDictionary(values, name),
                                                           NSPropertyListXMLFormat_v1_0, 0);
}

Data saveState(const UnitHost& host) {
    auto bytes = stateBytes(parameterValues(host), PresetPatch().name);
    return bytes ? std::move(bytes).value() : Data{}; // numbers and fixed texts can always be written
}

Result<void> restoreState(UnitHost& host, std::span<const std::uint8_t> bytes) {
    const auto state = checkState(Data(bytes.begin(), bytes.end()), Completeness::allParameters);
    if (!state) {
        return NSError(state.error().domain, state.error().code,
                       {{NSLocalizedDescriptionKey, "The saved state is damaged and was not restored: " +
                                                        state.error().localizedDescription()}});
    }
    applyState(host, state.value());
    return {};
}

void applyState(UnitHost& host, const CheckedState& state) {
    host.changeState(
        [&state](QOR_Limiter_Extension_AudioUnit& unit) { unit.setFullState(state.dictionary); });
}

} // namespace qor::host
