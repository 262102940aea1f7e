// A group of parameters and further groups.
#pragma once

#include "platform/audio/AUParameter.h"

namespace platform {

/// Holds its children in order. Made by `AUParameterTree::createGroup`.
class AUParameterGroup : public AUParameterNode {
public:
    ~AUParameterGroup() override;

    const std::vector<Ref<AUParameterNode>>& children() const noexcept { return children_; }
    /// Every parameter below, in the order of the children, depth first.
    std::vector<Ref<AUParameter>> allParameters() const;

protected:
    /// Takes the children over: from now on this is their parent.
    AUParameterGroup(std::string identifier, std::string displayName,
                     std::vector<Ref<AUParameterNode>> children);

private:
    friend class AUParameterTree;

    std::vector<Ref<AUParameterNode>> children_;
};

} // namespace platform
