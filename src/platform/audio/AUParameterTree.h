// The root of a unit's parameters, and the factory of all nodes.
#pragma once

#include "platform/audio/AUParameterGroup.h"

#include <map>

namespace platform {

/// Built once and not changed afterwards.
class AUParameterTree final : public AUParameterGroup {
public:
    /// A tree without children.
    AUParameterTree();

    static Ref<AUParameter>
    createParameter(std::string identifier, std::string name, AUParameterAddress address, AUValue min,
                    AUValue max, AudioUnitParameterUnit unit, std::optional<std::string> unitName,
                    AudioUnitParameterOptions flags, std::optional<std::vector<std::string>> valueStrings,
                    std::optional<std::vector<AUParameterAddress>> dependentParameters);
    static Ref<AUParameterGroup> createGroup(std::string identifier, std::string name,
                                             std::vector<Ref<AUParameterNode>> children);
    static Ref<AUParameterTree> createTree(std::vector<Ref<AUParameterNode>> children);

    /// The parameter with the address, the first one if there are several; absent if there is none.
    Ref<AUParameter> parameterWithAddress(AUParameterAddress address) const;

private:
    explicit AUParameterTree(std::vector<Ref<AUParameterNode>> children);

    std::map<AUParameterAddress, Ref<AUParameter>> byAddress_;
};

} // namespace platform
