#include "platform/audio/AUParameterGroup.h"

namespace platform {

AUParameterGroup::AUParameterGroup(std::string identifier, std::string displayName,
                                   std::vector<Ref<AUParameterNode>> children)
    : AUParameterNode(std::move(identifier), std::move(displayName)), children_(std::move(children)) {
    for (const Ref<AUParameterNode>& child : children_) {
        child->parent_ = this;
    }
}

AUParameterGroup::~AUParameterGroup() {
    for (const Ref<AUParameterNode>& child : children_) {
        if (child->parent_ == this) {
            child->parent_ = nullptr;
        }
    }
}

std::vector<Ref<AUParameter>> AUParameterGroup::allParameters() const {
    std::vector<Ref<AUParameter>> found;
    for (const Ref<AUParameterNode>& child : children_) {
        if (auto parameter = std::dynamic_pointer_cast<AUParameter>(child)) {
            found.push_back(std::move(parameter));
        } else if (const auto group = std::dynamic_pointer_cast<AUParameterGroup>(child)) {
            const std::vector<Ref<AUParameter>> inner = group->allParameters();
            found.insert(found.end(), inner.begin(), inner.end());
        }
    }
    return found;
}

} // namespace platform
