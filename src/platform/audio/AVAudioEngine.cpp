#include "platform/audio/AVAudioEngine.h"

#include "platform/audio/AVAudioUnitEffect.h"

namespace platform {

AVAudioEngine::~AVAudioEngine() {
    for (const auto& node : nodes_) {
        node->engine_ = nullptr;
    }
}

void AVAudioEngine::attachNode(const Ref<AVAudioUnitEffect>& node) {
    if (!node || node->engine_ == this) {
        return;
    }
    if (node->engine_ != nullptr) {
        node->engine_->detachNode(node);
    }
    node->engine_ = this;
    nodes_.push_back(node);
}

void AVAudioEngine::detachNode(const Ref<AVAudioUnitEffect>& node) {
    if (node && node->engine_ == this) {
        node->engine_ = nullptr;
        std::erase(nodes_, node);
    }
}

} // namespace platform
