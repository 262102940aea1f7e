// A graph of audio nodes, as far as it is in use: it holds nodes.
#pragma once

#include "platform/core/Ref.h"

#include <vector>

namespace platform {

class AVAudioUnitEffect;

/// Keeps the nodes that are attached to it. It renders nothing. Configuration thread.
class AVAudioEngine {
public:
    AVAudioEngine() = default;
    AVAudioEngine(const AVAudioEngine&) = delete;
    AVAudioEngine& operator=(const AVAudioEngine&) = delete;
    ~AVAudioEngine();

    /// Takes the node in; one that sits in another engine leaves that one first. An absent node or one that
    /// is attached already changes nothing.
    void attachNode(const Ref<AVAudioUnitEffect>& node);
    /// Lets the node go; one that is not attached changes nothing.
    void detachNode(const Ref<AVAudioUnitEffect>& node);

    const std::vector<Ref<AVAudioUnitEffect>>& attachedNodes() const noexcept { return nodes_; }

private:
    std::vector<Ref<AVAudioUnitEffect>> nodes_;
};

} // namespace platform
