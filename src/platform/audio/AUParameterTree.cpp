#include "platform/audio/AUParameterTree.h"

namespace platform {

AUParameterTree::AUParameterTree() : AUParameterTree(std::vector<Ref<AUParameterNode>>()) {}

AUParameterTree::AUParameterTree(std::vector<Ref<AUParameterNode>> children)
    : AUParameterGroup("", "", std::move(children)) {
    for (Ref<AUParameter>& parameter : allParameters()) {
        byAddress_.emplace(parameter->address(), parameter);
    }
}

Ref<AUParameter>
AUParameterTree::createParameter(std::string identifier, std::string name, AUParameterAddress address,
                                 AUValue min, AUValue max, AudioUnitParameterUnit unit,
                                 std::optional<std::string> unitName, AudioUnitParameterOptions flags,
                                 std::optional<std::vector<std::string>> valueStrings,
                                 std::optional<std::vector<AUParameterAddress>> dependentParameters) {
    return Ref<AUParameter>(new AUParameter(std::move(identifier), std::move(name), address, min, max, unit,
                                            std::move(unitName), flags, std::move(valueStrings),
                                            std::move(dependentParameters)));
}

Ref<AUParameterGroup> AUParameterTree::createGroup(std::string identifier, std::string name,
                                                   std::vector<Ref<AUParameterNode>> children) {
    return Ref<AUParameterGroup>(
        new AUParameterGroup(std::move(identifier), std::move(name), std::move(children)));
}

Ref<AUParameterTree> AUParameterTree::createTree(std::vector<Ref<AUParameterNode>> children) {
    return Ref<AUParameterTree>(new AUParameterTree(std::move(children)));
}

Ref<AUParameter> AUParameterTree::parameterWithAddress(AUParameterAddress address) const {
    const auto found = byAddress_.find(address);
    return found == byAddress_.end() ? nullptr : found->second;
}

} // namespace platform
