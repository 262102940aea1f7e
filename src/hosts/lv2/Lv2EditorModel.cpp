#include "hosts/lv2/Lv2EditorModel.h"

#include "unit/UnitComponent.h"

#include <algorithm>
#include <cmath>

namespace qor::lv2 {

MeterUnit::MeterUnit() : QOR_Limiter_Extension_AudioUnit(kQORLimiterComponent) {}

Result<Ref<MeterUnit>> MeterUnit::make() {
    Ref<MeterUnit> unit(new MeterUnit);
    if (auto made = unit->initWithComponentDescription(kQORLimiterComponent, {}); !made) {
        return made.error();
    }
    return unit;
}

Result<void> Lv2EditorModel::setParameter(AUParameterAddress address, float value) {
    const ParameterRow* row = parameterRow(address);
    if (row == nullptr || !std::isfinite(value)) {
        return NSError(
            NSOSStatusErrorDomain, kAudioUnitErr_InvalidParameter,
            {{NSLocalizedDescriptionKey, "There is no such parameter, or its value is not finite."}});
    }
    unwrap(unit_->parameterTree()->parameterWithAddress(address))
        .setValue(std::clamp(value, row->minimum, row->maximum));
    return {};
}

float Lv2EditorModel::parameter(AUParameterAddress address) {
    return unit_->getParameter(static_cast<std::int32_t>(address));
}

Result<void> Lv2EditorModel::load(const host::PresetEntry& preset) {
    const auto state = host::readPreset(preset);
    if (!state) {
        return state.error();
    }
    for (const ParameterRow& row : kParameterTable) {
        if (const auto& value = state.value().values[row.address]; value) {
            if (auto set = setParameter(row.address, *value); !set) {
                return set;
            }
        }
    }
    return {};
}

Result<void> Lv2EditorModel::save(const std::string& name) {
    host::ParameterValues values{};
    for (const ParameterRow& row : kParameterTable) {
        values[row.address] = parameter(row.address);
    }
    if (auto saved = host::savePreset(name, values); !saved) {
        return saved.error();
    }
    return {};
}

void Lv2EditorModel::portIs(std::uint32_t port, float value) {
    if (port >= kFirstMeter && port < kPortCount) {
        unit_->meters[port - kFirstMeter] = value;
    } else if (port >= kFirstParameter && port < kFirstParameter + kParameterCount &&
               value != parameter(port - kFirstParameter)) {
        // A value that is not finite is the port's affair; the panel keeps what it shows.
        static_cast<void>(setParameter(port - kFirstParameter, value));
    }
}

} // namespace qor::lv2
