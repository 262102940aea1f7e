#include "unit/QORPreset.h"

namespace qor {

void QORPreset::makeFrom(const AUParameterGroup* tree) {
    if (tree == nullptr || tree->children().empty()) {
        print("PresetPatch: The parameter group has no children.");
        return;
    }
    for (const Ref<AUParameterNode>& child : tree->children()) {
        const auto* group = dynamic_cast<const AUParameterGroup*>(child.get());
        if (group == nullptr) {
            continue;
        }
        auto presetGroup = makeRef<PresetGroup>();
        presetGroup->identifier = group->identifier();
        for (const Ref<AUParameter>& parameter : group->allParameters()) {
            auto param = makeRef<PresetParam>();
            param->address = parameter->address();
            param->identifier = parameter->identifier();
            param->value = parameter->value();
            presetGroup->params.push_back(std::move(param));
        }
        patch->groups.push_back(std::move(presetGroup));
    }
}

void QORPreset::makeFrom(const std::optional<PropertyListDictionary>& state) {
    if (state) {
        patch->fromDictionary(*state);
    }
}

std::optional<PropertyListDictionary> QORPreset::getDictionary() {
    return patch->toDictionary();
}

void QORPreset::save(const URL& url) {
    patch->saveToFile(url);
}

void QORPreset::load(const URL& url) {
    patch->loadFromFile(url);
}

void QORPreset::foundParameter(std::int64_t group, const std::string& identifier, std::uint64_t address,
                               float value) {
    if (const Ref<QORPresetDelegate> listener = delegate.lock()) {
        listener->onFoundParameter(group, identifier, address, value);
    }
}

} // namespace qor
